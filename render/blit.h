// Puts small masks onto a larger one, at whole pixels.
#pragma once

#include "platform/coverage_mask.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace amperly {

/// Pixels of somebody else's mask: rows from the top, `width` bytes each.
struct MaskView {
    const std::uint8_t* coverage = nullptr;
    int width = 0;
    int height = 0;
};

[[nodiscard]] inline MaskView viewOf(const CoverageMask& mask)
{
    return {mask.coverage.data(), mask.width, mask.height};
}

/// One row of blit(). Characters and symbols hardly ever touch, so eight pixels at a time are
/// mostly laid where there is no ink yet.
inline void blitRow(std::uint8_t* onto, const std::uint8_t* from, int columns)
{
    constexpr int kAtOnce = sizeof(std::uint64_t);
    int column = 0;
    for (; column + kAtOnce <= columns; column += kAtOnce) {
        std::uint64_t below = 0;
        std::memcpy(&below, onto + column, kAtOnce);
        if (below == 0) {
            std::memcpy(onto + column, from + column, kAtOnce);
            continue;
        }
        for (int each = column; each < column + kAtOnce; ++each)
            onto[each] = std::max(onto[each], from[each]);
    }
    for (; column < columns; ++column)
        onto[column] = std::max(onto[column], from[column]);
}

/// Lays `source` onto `target` with its upper left corner at (`left`, `top`); what lies outside
/// is cut off. Where both have ink the stronger counts.
inline void blit(CoverageMask& target, const MaskView& source, int left, int top)
{
    const int firstRow = std::max(0, -top);
    const int lastRow = std::min(source.height, target.height - top);
    const int firstColumn = std::max(0, -left);
    const int columns = std::min(source.width, target.width - left) - firstColumn;
    for (int row = firstRow; row < lastRow; ++row) {
        const std::uint8_t* from
            = source.coverage + static_cast<std::ptrdiff_t>(row) * source.width + firstColumn;
        std::uint8_t* onto = target.coverage.data() + static_cast<std::ptrdiff_t>(top + row) * target.width
            + left + firstColumn;
        blitRow(onto, from, columns);
    }
}

/// The same, but moves `source` sideways as far as it takes to keep all of it on `target`: by
/// fitting to pixels, ink may come to stand a pixel outside of its room.
inline void blitInside(CoverageMask& target, const MaskView& source, int left, int top)
{
    const int most = std::max(0, target.width - source.width);
    blit(target, source, std::clamp(left, 0, most), top);
}

} // namespace amperly
