// The numbers by which an X server knows names.
#pragma once

#include <span>
#include <string_view>
#include <xcb/xcb.h>

namespace amperly {

/// A name and where its number goes.
struct X11AtomName {
    xcb_atom_t* atom;
    std::string_view name;
    xcb_intern_atom_cookie_t asked{}; ///< while it is on its way
};

/// Fills every `atom` in, all by one round trip; a name that the server refuses leaves its own
/// as it was.
void internAtoms(xcb_connection_t* connection, std::span<X11AtomName> names);

/// One name's; XCB_ATOM_NONE where the server refuses it.
[[nodiscard]] xcb_atom_t internAtom(xcb_connection_t* connection, std::string_view name);

} // namespace amperly
