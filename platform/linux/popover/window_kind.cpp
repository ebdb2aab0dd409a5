#include "platform/linux/popover/window_kind.h"

#include "platform/linux/popover/layer_window.h"
#include "platform/linux/popover/popup_window.h"
#include "platform/linux/popover/toplevel_window.h"

#include <QGuiApplication>

namespace amperly {

WindowKind windowKindOfDesktop()
{
    if (!QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        return WindowKind::Popup;
    return LayerSurface::isAvailable() ? WindowKind::Layer : WindowKind::Toplevel;
}

void allowLayerWindows()
{
    qputenv("QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT", "1");
}

std::unique_ptr<TransientWindow> makeTransientWindow(
    WindowKind kind, std::unique_ptr<QWidget> content, CardEdge edge)
{
    switch (kind) {
    case WindowKind::Layer:
        return std::make_unique<LayerWindow>(std::move(content), edge);
    case WindowKind::Toplevel:
        return std::make_unique<ToplevelWindow>(std::move(content), edge);
    case WindowKind::Popup:
        break;
    }
    return std::make_unique<PopupWindow>(std::move(content), edge);
}

} // namespace amperly
