// The transient window of Wayland compositors that let a program neither place a window nor see
// a click outside of it: an ordinary window without a frame, which closes when it loses the focus.
// It lies where the compositor puts it, which may be far from the item, so it shows how to close it.
#pragma once

#include "platform/linux/popover/transient_window.h"

namespace amperly {

class CloseButton;

class ToplevelWindow : public TransientWindow {
public:
    ToplevelWindow(std::unique_ptr<QWidget> content, CardEdge edge);

    /// The compositor decides about the place.
    void open(std::optional<ScreenPoint> anchor) override;

protected:
    void placeCard() override;
    void changeEvent(QEvent* event) override;

private:
    CloseButton* m_close = nullptr; ///< none on a menu, which every entry closes
    bool m_hadFocus = false;
};

} // namespace amperly
