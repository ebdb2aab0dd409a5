// A symbol as an icon for lists: drawn when needed, at the screen's scale, in the colour of the
// text beside it.
#pragma once

#include <QIcon>
#include <string_view>

namespace amperly {

/// `name` lives as long as the program.
[[nodiscard]] QIcon symbolIcon(std::string_view name);

} // namespace amperly
