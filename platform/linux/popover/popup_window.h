// The transient window of X11: a popup that holds pointer and keyboard while it is open, so that
// a press anywhere else is known and closes it.
#pragma once

#include "platform/linux/popover/transient_window.h"

namespace amperly {

class PopupWindow : public TransientWindow {
public:
    /// A card that would be shadowed is plain where nothing can be translucent.
    PopupWindow(std::unique_ptr<QWidget> content, CardEdge edge);

    void open(std::optional<ScreenPoint> anchor) override;

protected:
    void placeCard() override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void hold();

    QPoint m_place;
    int m_triesLeft;
};

} // namespace amperly
