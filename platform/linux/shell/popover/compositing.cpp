#include "platform/linux/shell/popover/compositing.h"

#include <QGuiApplication>

#include <cstdlib>
#include <memory>
#include <string_view>
#include <xcb/xcb.h>

namespace amperly {
namespace {

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};

} // namespace

bool isComposited()
{
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t* const connection = x11 != nullptr ? x11->connection() : nullptr;
    if (connection == nullptr)
        return true;
    constexpr std::string_view kSelection = "_NET_WM_CM_S0";
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> atom(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, kSelection.size(), kSelection.data()), nullptr));
    if (!atom)
        return false;
    const std::unique_ptr<xcb_get_selection_owner_reply_t, Free> owner(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, atom->atom), nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

} // namespace amperly
