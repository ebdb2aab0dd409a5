// The toolkit's connection to the X server. Sharing it means that nothing more wakes the program.
#pragma once

#include <xcb/xcb.h>

namespace amperly {

/// Borrowed from the application object; null where there is none or it is not on X11.
[[nodiscard]] xcb_connection_t* x11Connection();

} // namespace amperly
