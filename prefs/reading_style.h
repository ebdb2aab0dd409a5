// The four ways in which a reading of the status image can be shown. The raw value is what is
// stored; it must never change, the label may.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string_view>

namespace amperly {

enum class ReadingStyle { iconAndValue, valueOnly, iconOnly, hidden };

/// Every style, in the order in which pickers offer them.
inline constexpr std::array<ReadingStyle, 4> allCases{
    ReadingStyle::iconAndValue, ReadingStyle::valueOnly, ReadingStyle::iconOnly, ReadingStyle::hidden};

/// The stored text of a style.
[[nodiscard]] std::string_view rawValue(ReadingStyle style);

/// What tells one style from another in a picker: its raw value.
[[nodiscard]] std::string_view id(ReadingStyle style);

/// What the user reads.
[[nodiscard]] std::string_view label(ReadingStyle style);

[[nodiscard]] bool showsIcon(ReadingStyle style);
[[nodiscard]] bool showsValue(ReadingStyle style);

/// The style with this raw value, letter case included; nothing for any other text.
[[nodiscard]] std::optional<ReadingStyle> readingStyle(std::string_view rawValue);

} // namespace amperly

/// By raw value, as the style is stored.
template <>
struct std::hash<amperly::ReadingStyle> {
    [[nodiscard]] std::size_t operator()(amperly::ReadingStyle style) const
    {
        return std::hash<std::string_view>{}(amperly::rawValue(style));
    }
};
