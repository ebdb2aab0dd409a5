#include "platform/linux/popover/compositing.h"

#include "platform/linux/x11/x11_atoms.h"
#include "platform/linux/x11/x11_connection.h"
#include "platform/linux/x11/x11_reply.h"

namespace amperly {

bool isComposited()
{
    xcb_connection_t* const connection = x11Connection();
    if (connection == nullptr)
        return true;
    const xcb_atom_t selection = internAtom(connection, "_NET_WM_CM_S0");
    const X11Reply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, selection), nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

} // namespace amperly
