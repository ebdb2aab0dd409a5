// From coverage and ink to what the X server is sent: rows of 32-bit pixels 0xAARRGGBB for the
// whole window, the mask in its middle. What sticks out is cut off.
#pragma once

#include "platform/coverage_mask.h"
#include "platform/linux/xembed/pixel_size.h"

#include <cstdint>
#include <span>
#include <vector>

namespace amperly {

/// For a window with an alpha channel: premultiplied, transparent where there is no ink.
void premultipliedPixels(
    const CoverageMask& mask, Ink ink, PixelSize window, std::vector<std::uint32_t>& pixels);

/// For a window without one: the ink over `background`, which has the window's size. The highest
/// byte means nothing there.
void pixelsOver(std::span<const std::uint32_t> background, const CoverageMask& mask, Ink ink,
    PixelSize window, std::vector<std::uint32_t>& pixels);

} // namespace amperly
