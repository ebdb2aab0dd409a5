// Rounds a number the way number formatters do: on its shortest decimal writing, halves to the
// even digit. The shortest writing of a double is the one with the fewest digits that still
// reads back as the same double, so 0.35 is exactly a half here, whatever its bits say.
#pragma once

#include <cstdint>

namespace amperly {

/// Numbers from here on have digits before the point that no double holds for sure.
inline constexpr double kLargestRoundable = 1e15;

/// `value` times ten to the power of `fractionDigits`, rounded to an integer. `value` lies from
/// 0 to below kLargestRoundable, `fractionDigits` is 0 or 1.
[[nodiscard]] std::uint64_t roundedHalfEven(double value, int fractionDigits);

} // namespace amperly
