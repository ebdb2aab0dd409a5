#include "platform/linux/xembed/pixel_blend.h"

#include <algorithm>

namespace amperly {

namespace {

/// a × b of 255, rounded.
constexpr std::uint32_t share(std::uint32_t a, std::uint32_t b)
{
    return (a * b + 127) / 255;
}

constexpr std::uint32_t channel(std::uint32_t pixel, unsigned shift)
{
    return (pixel >> shift) & 0xff;
}

/// Calls put(pixel, alpha) for each pixel that the centred mask has ink on.
void forEachInked(const CoverageMask& mask, Ink ink, PixelSize window, auto put)
{
    // Rounded down on both sides of zero: a mask one pixel too large loses its last row or column
    // before its first, as one that is a pixel too small leaves it free.
    const auto half = [](int difference) { return difference >> 1; };
    const int left = half(window.width - mask.width);
    const int top = half(window.height - mask.height);
    const int firstX = std::max(0, left);
    const int lastX = std::min(window.width, left + mask.width);
    const int lastY = std::min(window.height, top + mask.height);
    for (int y = std::max(0, top); y < lastY; ++y) {
        for (int x = firstX; x < lastX; ++x) {
            const std::uint32_t alpha = share(mask.at(x - left, y - top), ink.argb >> 24);
            if (alpha != 0) {
                put(static_cast<std::size_t>(y) * static_cast<std::size_t>(window.width)
                        + static_cast<std::size_t>(x),
                    alpha);
            }
        }
    }
}

} // namespace

void premultipliedPixels(
    const CoverageMask& mask, Ink ink, PixelSize window, std::vector<std::uint32_t>& pixels)
{
    pixels.assign(static_cast<std::size_t>(window.width) * static_cast<std::size_t>(window.height), 0);
    forEachInked(mask, ink, window, [&](std::size_t index, std::uint32_t alpha) {
        std::uint32_t pixel = alpha << 24;
        for (const unsigned shift : {16U, 8U, 0U})
            pixel |= share(channel(ink.argb, shift), alpha) << shift;
        pixels[index] = pixel;
    });
}

void pixelsOver(std::span<const std::uint32_t> background, const CoverageMask& mask, Ink ink,
    PixelSize window, std::vector<std::uint32_t>& pixels)
{
    pixels.assign(background.begin(), background.end());
    forEachInked(mask, ink, window, [&](std::size_t index, std::uint32_t alpha) {
        std::uint32_t pixel = 0xff000000;
        for (const unsigned shift : {16U, 8U, 0U}) {
            const std::uint32_t mixed
                = channel(ink.argb, shift) * alpha + channel(background[index], shift) * (255 - alpha);
            pixel |= ((mixed + 127) / 255) << shift;
        }
        pixels[index] = pixel;
    });
}

} // namespace amperly
