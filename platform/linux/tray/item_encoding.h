// Pictures and texts as status items carry them.
//
// A pixmap is ARGB, each pixel four bytes in network order, rows from the top.
#pragma once

#include "platform/coverage_mask.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace amperly {

/// How the colour of a translucent pixel is stated.
enum class PixmapAlpha {
    Straight, ///< as the colour it would have if it were solid; what the protocol means
    Premultiplied, ///< weakened by its alpha
};

/// Bytes that `mask` takes as a pixmap.
[[nodiscard]] std::size_t pixmapSize(const CoverageMask& mask);

/// Writes `mask` in `ink` to `bytes`, which is of pixmapSize(). A translucent ink makes the
/// coverage as much weaker.
void writePixmap(const CoverageMask& mask, Ink ink, PixmapAlpha alpha, std::span<std::uint8_t> bytes);

/// `text` such that hosts that read markup show it as it is. Nothing else is done to it: tags, even line
/// breaks, make some of them show an empty tool tip.
[[nodiscard]] std::string asMarkup(std::string_view text);

} // namespace amperly
