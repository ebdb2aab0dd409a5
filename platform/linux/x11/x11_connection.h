// The toolkit's connection to the X server, and what is asked over it. Sharing it means that nothing
// more wakes the program.
//
// What the server refuses is often no error here: the windows of a panel may be gone at any time.
#pragma once

#include <cstdlib>
#include <memory>
#include <span>
#include <string_view>
#include <xcb/xcb.h>

namespace amperly {

/// Borrowed from the application object; null where there is none or it is not on X11.
[[nodiscard]] xcb_connection_t* x11Connection();

struct X11Freed {
    void operator()(void* memory) const { std::free(memory); }
};

/// What the server answers, which is the caller's to free; null where the request failed.
template <typename Reply>
using X11Reply = std::unique_ptr<Reply, X11Freed>;

/// Lets the outcome of a checked request pass unheard, so that a window that has just gone does
/// not show up in the toolkit's log.
inline void ignoreOutcome(xcb_connection_t* connection, xcb_void_cookie_t checked)
{
    xcb_discard_reply(connection, checked.sequence);
}

/// A name, and where the number that the server knows it by goes.
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

/// The window of whoever owns `selection`; XCB_WINDOW_NONE where nobody does.
[[nodiscard]] xcb_window_t selectionOwner(xcb_connection_t* connection, xcb_atom_t selection);

} // namespace amperly
