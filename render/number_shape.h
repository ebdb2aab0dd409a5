// How one locale writes a plain decimal number: its ten digits, its separators and where they
// stand. The system knows all of this, but its formatter takes a microsecond for each number and keeps
// its memory for good, so it is asked once, with a specimen, and let go.
#pragma once

#include "render/short_text.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace amperly {

struct NumberShape {
    std::array<ShortText, 10> digits{};
    ShortText prefix{}; ///< before the first digit, mostly empty
    ShortText suffix{}; ///< behind the last one, mostly empty
    ShortText decimalSeparator{};
    ShortText groupingSeparator{};
    std::uint8_t primaryGroup = 0; ///< digits in the group before the decimal separator, 0 for no groups
    std::uint8_t secondaryGroup = 0; ///< digits in every group before that one
    std::uint8_t minimumGroupingDigits = 1; ///< how many must stand before the first separator

    /// Appends `scaled` divided by ten to the power of `fractionDigits`, which is 0 or 1, with
    /// that many digits behind the separator.
    void append(std::string& text, std::uint64_t scaled, int fractionDigits) const;

    friend bool operator==(const NumberShape&, const NumberShape&) = default;
};

/// The shape of positive decimals in the locale, by the system's name for it. Nothing when it can't
/// tell, or writes numbers that no shape describes.
[[nodiscard]] std::optional<NumberShape> harvestNumberShape(const std::string& localeId);

} // namespace amperly
