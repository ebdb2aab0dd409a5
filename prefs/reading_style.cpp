#include "prefs/reading_style.h"

namespace amperly {

namespace {

struct StyleRow {
    ReadingStyle style;
    std::string_view rawValue;
    std::string_view label;
    bool showsIcon;
    bool showsValue;
};

constexpr std::array<StyleRow, allCases.size()> kStyleRows{{
    {ReadingStyle::iconAndValue, "iconAndValue", "Icon + value", true, true},
    {ReadingStyle::valueOnly, "valueOnly", "Value only", false, true},
    {ReadingStyle::iconOnly, "iconOnly", "Icon only", true, false},
    {ReadingStyle::hidden, "hidden", "Hidden", false, false},
}};

constexpr const StyleRow& row(ReadingStyle style)
{
    return kStyleRows.at(static_cast<std::size_t>(style));
}

constexpr bool rowsStandAtTheirStyle()
{
    for (const ReadingStyle style : allCases) {
        if (row(style).style != style)
            return false;
    }
    return true;
}
static_assert(rowsStandAtTheirStyle(), "a row is found by its style's place in the enumeration");

} // namespace

std::string_view rawValue(ReadingStyle style)
{
    return row(style).rawValue;
}

std::string_view id(ReadingStyle style)
{
    return rawValue(style);
}

std::string_view label(ReadingStyle style)
{
    return row(style).label;
}

bool showsIcon(ReadingStyle style)
{
    return row(style).showsIcon;
}

bool showsValue(ReadingStyle style)
{
    return row(style).showsValue;
}

std::optional<ReadingStyle> readingStyle(std::string_view rawValue)
{
    for (const StyleRow& candidate : kStyleRows) {
        if (candidate.rawValue == rawValue)
            return candidate.style;
    }
    return std::nullopt;
}

} // namespace amperly
