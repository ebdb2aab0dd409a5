// How much a picture differs from what it should be.
#pragma once

#include <QImage>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace amperly::glass {

/// In steps of a channel, of which there are 255; the worst of the four channels counts.
struct PictureDifference {
    double mean = 0.0; ///< over all pixels
    int permille = 0; ///< 999 of 1000 pixels differ by no more
    double meanOnGlass = 0.0; ///< over the pixels that are more than glow

    /// The worse of two in every respect.
    [[nodiscard]] PictureDifference worst(const PictureDifference& other) const
    {
        return {std::max(mean, other.mean), std::max(permille, other.permille),
            std::max(meanOnGlass, other.meanOnGlass)};
    }
};

/// One channel of a picture that is compared.
class ChannelDifference {
public:
    void add(int step, bool isGlass)
    {
        ++m_counts[static_cast<std::size_t>(step)];
        m_sum += step;
        m_sumOnGlass += isGlass ? step : 0;
        m_glass += isGlass ? 1 : 0;
    }

    [[nodiscard]] PictureDifference ofPixels(std::size_t count) const
    {
        const auto pixels = static_cast<double>(count);
        PictureDifference difference{.mean = static_cast<double>(m_sum) / pixels};
        if (m_glass > 0)
            difference.meanOnGlass = static_cast<double>(m_sumOnGlass) / static_cast<double>(m_glass);
        long within = m_counts[0];
        while (static_cast<double>(within) < 0.999 * pixels)
            within += m_counts[static_cast<std::size_t>(++difference.permille)];
        return difference;
    }

private:
    std::array<long, 256> m_counts{};
    long m_sum = 0;
    long m_sumOnGlass = 0;
    long m_glass = 0;
};

/// `pixels` are premultiplied, like the image, and lie row by row without gaps.
[[nodiscard]] inline PictureDifference differenceOf(
    const QImage& expected, const std::vector<std::uint32_t>& pixels)
{
    constexpr std::uint32_t kMostGlow = 64;
    std::array<ChannelDifference, 4> channels;
    const std::uint32_t* pixel = pixels.data();
    for (int y = 0; y < expected.height(); ++y) {
        const auto* const row = reinterpret_cast<const std::uint32_t*>(expected.constScanLine(y));
        for (int x = 0; x < expected.width(); ++x, ++pixel) {
            const bool isGlass = row[x] >> 24U > kMostGlow;
            for (std::size_t channel = 0; channel < channels.size(); ++channel) {
                const auto valueIn = [shift = 8 * channel](std::uint32_t argb) {
                    return static_cast<int>(argb >> shift & 0xffU);
                };
                channels[channel].add(std::abs(valueIn(row[x]) - valueIn(*pixel)), isGlass);
            }
        }
    }
    PictureDifference worst;
    for (const ChannelDifference& channel : channels)
        worst = worst.worst(channel.ofPixels(pixels.size()));
    return worst;
}

} // namespace amperly::glass
