#include "platform/linux/x11/x11_connection.h"

#include <QGuiApplication>

#include <cstdint>

namespace amperly {

xcb_connection_t* x11Connection()
{
    const auto* const x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

void internAtoms(xcb_connection_t* connection, std::span<X11AtomName> names)
{
    for (X11AtomName& each : names)
        each.asked
            = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(each.name.size()), each.name.data());
    for (const X11AtomName& each : names) {
        const X11Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, each.asked, nullptr));
        if (reply)
            *each.atom = reply->atom;
    }
}

xcb_atom_t internAtom(xcb_connection_t* connection, std::string_view name)
{
    xcb_atom_t atom = XCB_ATOM_NONE;
    X11AtomName asked{&atom, name};
    internAtoms(connection, {&asked, 1});
    return atom;
}

xcb_window_t selectionOwner(xcb_connection_t* connection, xcb_atom_t selection)
{
    const X11Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, selection), nullptr));
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

} // namespace amperly
