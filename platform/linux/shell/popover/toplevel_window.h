// The transient window of Wayland compositors that let a program neither place a window nor see
// a click outside of it: an ordinary window without a frame, which closes when it loses the focus.
#pragma once

#include "platform/linux/shell/popover/transient_window.h"

namespace amperly {

class ToplevelWindow : public TransientWindow {
public:
    ToplevelWindow(std::unique_ptr<QWidget> content, CardEdge edge);

    /// The compositor decides about the place.
    void open(std::optional<ScreenPoint> anchor) override;

protected:
    void placeCard() override;
    void changeEvent(QEvent* event) override;

private:
    bool m_hadFocus = false;
};

} // namespace amperly
