// Whether the program has anything on screen that the user could be looking at. The status item
// does not count: the panel draws it.
#pragma once

namespace amperly {

/// True while any of the program's windows is shown, menus and panels included.
[[nodiscard]] bool anyWindowVisible();

} // namespace amperly
