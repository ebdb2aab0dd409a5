// A window that shows one card until the user turns to something else. Each windowing system has
// its own way to notice that, so there is a kind of window for each.
//
// Made with its content, opened once, closed once. Closed, it is only good for being destroyed.
#pragma once

#include "platform/linux/popover/card.h"
#include "platform/linux/popover/placement.h"

#include <functional>

namespace amperly {

/// What made a transient window close.
enum class ClosedBy {
    Request, ///< the program, Esc, or the desktop itself
    OutsidePress, ///< the user turned to something else
};

class TransientWindow : public QWidget {
public:
    TransientWindow(std::unique_ptr<QWidget> content, CardEdge edge, Qt::WindowFlags flags);
    ~TransientWindow() override;

    /// Shows the window beside `anchor`, or where the user seems to be.
    virtual void open(std::optional<ScreenPoint> anchor) = 0;

    /// Called once, when the window is not shown any more. It must not be destroyed from there.
    void onClosed(std::function<void(ClosedBy)> handler) { m_closed = std::move(handler); }

protected:
    [[nodiscard]] Card& card() const { return *m_card; }

    /// Closes as `by` has it.
    void dismiss(ClosedBy by);

    /// The card wants another place because its size has changed.
    virtual void placeCard() = 0;

    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    Card* m_card;
    ClosedBy m_closedBy = ClosedBy::Request;
    std::function<void(ClosedBy)> m_closed;
};

/// The screen that a place lies on, or the nearest to one that lies on none.
[[nodiscard]] ScreenArea screenAround(QPoint place);

} // namespace amperly
