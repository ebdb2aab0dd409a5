// What the X server answers is the caller's to free, and what it refuses is often no error here:
// the windows of a panel may be gone at any time.
#pragma once

#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace amperly {

struct X11Freed {
    void operator()(void* memory) const { std::free(memory); }
};

/// Null where the request failed.
template <typename Reply>
using X11Reply = std::unique_ptr<Reply, X11Freed>;

/// Lets the outcome of a checked request pass unheard, so that a window that has just gone does
/// not show up in the toolkit's log.
inline void ignoreOutcome(xcb_connection_t* connection, xcb_void_cookie_t checked)
{
    xcb_discard_reply(connection, checked.sequence);
}

} // namespace amperly
