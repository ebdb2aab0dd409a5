// Which kind of transient window the desktop at hand takes.
#pragma once

#include "platform/linux/popover/transient_window.h"

namespace amperly {

enum class WindowKind { Popup, Layer, Toplevel };

/// What the windowing system and the compositor offer. Needs the application object.
[[nodiscard]] WindowKind windowKindOfDesktop();

/// To be called before the application object is made: without it the toolkit gives every window
/// on Wayland the role of an ordinary one.
void allowLayerWindows();

[[nodiscard]] std::unique_ptr<TransientWindow> makeTransientWindow(
    WindowKind kind, std::unique_ptr<QWidget> content, CardEdge edge);

} // namespace amperly
