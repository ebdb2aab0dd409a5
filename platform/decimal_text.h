// Numbers out of text, whatever the locale of the process.
#pragma once

#include <string_view>

namespace amperly {

/// The value of a decimal number without sign: digits, at least one, with a point among them or
/// not, and a power of ten. What fits no double comes out as the largest one or as 0.
[[nodiscard]] double decimalValue(std::string_view number);

} // namespace amperly
