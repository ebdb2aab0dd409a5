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

    /// Whether a point of this window's lies on the sheet, not on the shadow around it nor beside it.
    [[nodiscard]] bool isOnSheet(QPoint point) const
    {
        return m_card->sheet().contains(m_card->mapFrom(this, point));
    }

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

enum class WindowKind { Popup, Layer, Toplevel };

/// What the windowing system and the compositor offer. Needs the application object.
[[nodiscard]] WindowKind windowKindOfDesktop();

/// To be called before the application object is made: without it the toolkit gives every window
/// on Wayland the role of an ordinary one.
void allowLayerWindows();

[[nodiscard]] std::unique_ptr<TransientWindow> makeTransientWindow(
    WindowKind kind, std::unique_ptr<QWidget> content, CardEdge edge);

// Each kind's, from its own file.
[[nodiscard]] std::unique_ptr<TransientWindow> makePopupWindow(
    std::unique_ptr<QWidget> content, CardEdge edge);
[[nodiscard]] std::unique_ptr<TransientWindow> makeLayerWindow(
    std::unique_ptr<QWidget> content, CardEdge edge);
[[nodiscard]] std::unique_ptr<TransientWindow> makeToplevelWindow(
    std::unique_ptr<QWidget> content, CardEdge edge);

/// The screen that a point lies on, or the nearest to one that lies on none.
[[nodiscard]] ScreenArea screenAround(QPoint point);

} // namespace amperly
