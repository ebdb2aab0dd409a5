// A picture without colour: for each pixel, how much of it ink covers. Whoever shows it
// chooses the ink, so one drawing serves light, dark and highlighted panels.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace amperly {

struct CoverageMask {
    int width = 0; ///< pixels
    int height = 0; ///< pixels
    std::vector<std::uint8_t> coverage; ///< rows from the top, width bytes each, 255 = full ink

    /// Makes the mask `newWidth` × `newHeight` without ink; keeps the memory it has.
    void clear(int newWidth, int newHeight)
    {
        width = newWidth;
        height = newHeight;
        coverage.assign(static_cast<std::size_t>(newWidth) * static_cast<std::size_t>(newHeight), 0);
    }

    [[nodiscard]] std::uint8_t at(int x, int y) const
    {
        return coverage[static_cast<std::size_t>(y) * static_cast<std::size_t>(width)
            + static_cast<std::size_t>(x)];
    }

    friend bool operator==(const CoverageMask&, const CoverageMask&) = default;
};

/// A solid colour, straight (not premultiplied), 0xAARRGGBB.
struct Ink {
    std::uint32_t argb = 0xff000000;
    friend bool operator==(const Ink&, const Ink&) = default;
};

} // namespace amperly
