// The rounded design of the system's font.
#pragma once

#include <string>

namespace amperly {

/// The name of its family; empty where the system has none.
[[nodiscard]] std::string roundedFontFamily();

} // namespace amperly
