// How much a picture differs from what it should be.
#pragma once

#include <QImage>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace amperly {

/// In steps of a channel, of which there are 255.
struct PictureDifference {
    double mean = 0.0; ///< over all channels of all pixels
    int permille = 0; ///< 999 of 1000 channels differ by no more
    double meanOnGlass = 0.0; ///< over those of the pixels that are more than glow
};

/// `pixels` are premultiplied, like the image, and lie row by row without gaps.
[[nodiscard]] inline PictureDifference differenceOf(
    const QImage& expected, const std::vector<std::uint32_t>& pixels)
{
    std::array<long, 256> counts{};
    long sum = 0;
    long sumOnGlass = 0;
    long channelsOfGlass = 0;
    constexpr std::uint32_t kMostGlow = 64;
    const std::uint32_t* pixel = pixels.data();
    for (int y = 0; y < expected.height(); ++y) {
        const auto* const row = reinterpret_cast<const std::uint32_t*>(expected.constScanLine(y));
        for (int x = 0; x < expected.width(); ++x, ++pixel) {
            const bool isGlass = row[x] >> 24U > kMostGlow;
            for (unsigned shift = 0; shift < 32; shift += 8) {
                const int step = std::abs(
                    static_cast<int>(row[x] >> shift & 0xffU) - static_cast<int>(*pixel >> shift & 0xffU));
                ++counts[static_cast<std::size_t>(step)];
                sum += step;
                sumOnGlass += isGlass ? step : 0;
                channelsOfGlass += isGlass ? 1 : 0;
            }
        }
    }
    const auto channels = 4.0 * static_cast<double>(pixels.size());
    PictureDifference difference{.mean = static_cast<double>(sum) / channels};
    if (channelsOfGlass > 0)
        difference.meanOnGlass = static_cast<double>(sumOnGlass) / static_cast<double>(channelsOfGlass);
    long within = counts[0];
    while (static_cast<double>(within) < 0.999 * channels)
        within += counts[static_cast<std::size_t>(++difference.permille)];
    return difference;
}

} // namespace amperly
