// Where the readings of a status image stand: arithmetic on sizes, in points, with the origin
// at the bottom left.
#pragma once

#include "render/glyph_set.h"
#include "render/text_masks.h"

#include <array>
#include <cstddef>
#include <span>

namespace amperly {

/// At most so many readings: computer, charger, battery.
inline constexpr std::size_t kMostReadings = 3;

/// Height of the bar the image stands in, where the desktop doesn't tell one. Panels on Linux
/// reserve 22 points for a status icon and scale whatever is higher, which blurs it.
inline constexpr double kUsualBarHeight = 22.0;

/// The sizes that a layout goes by.
struct StatusLook {
    TextMaskStyle text;
    GlyphStyle glyph;
    double gap = 0.0; ///< between a symbol and its value, in a line
    double spacing = 0.0; ///< between readings
};

/// Value beside symbol.
[[nodiscard]] constexpr StatusLook lineLook(bool large, bool compact)
{
    return {.text = {.pointSize = large ? 13.0 : 11.0, .weight = FontWeight::Regular},
        .glyph = {.pointSize = large ? 14.0 : 13.0, .weight = FontWeight::Regular},
        .gap = compact ? 2.0 : 4.0,
        .spacing = compact ? 5.0 : 9.0};
}

/// Value above symbol.
[[nodiscard]] constexpr StatusLook stackedLook(bool large, bool compact)
{
    return {.text = {.pointSize = large ? 10.5 : 9.5, .weight = FontWeight::Medium},
        .glyph = {.pointSize = large ? 10.5 : 9.5, .weight = FontWeight::Medium},
        .gap = 0.0,
        .spacing = compact ? 3.0 : 6.0};
}

/// How large a reading's symbol and value are. What it lacks has no size.
struct PieceSize {
    bool hasGlyph = false;
    GlyphSize glyph;
    bool hasText = false;
    GlyphSize text;
};

/// Where they go: the lower left corner of each.
struct PiecePlace {
    double glyphX = 0.0;
    double glyphY = 0.0;
    double textX = 0.0;
    double textY = 0.0;
    friend bool operator==(const PiecePlace&, const PiecePlace&) = default;
};

struct StatusLayout {
    double width = 0.0; ///< of the image, at least 1
    std::array<PiecePlace, kMostReadings> places{};
};

/// One row. The image is a whole number of points wide, so that it doesn't stir between ticks.
[[nodiscard]] StatusLayout lineLayout(
    std::span<const PieceSize> pieces, const StatusLook& look, double height);

/// Columns, each centred in its width and in the height.
[[nodiscard]] StatusLayout stackedLayout(
    std::span<const PieceSize> pieces, const StatusLook& look, double height);

} // namespace amperly
