// The fixed-point numbers that the kernels calculate with, sixteen bits each, so that one instruction
// does eight or sixteen pixels.
#pragma once

#include <cstddef>
#include <cstdint>

namespace amperly::glass {

/// Lengths across a tube, and coverages: one pixel, and a pixel that is covered whole.
inline constexpr int kPixel = 256;

/// The longest length that fits, in pixels.
inline constexpr int kFurthestPixels = 126;

/// Opacities that coverages are multiplied with. The product, full at 65536, is never quite full.
inline constexpr int kOpaque = 256;

/// Channels while they are mixed: a step of 8 bits, and 255 of them.
inline constexpr int kChannelStep = 64;
inline constexpr int kFullChannel = 255 * kChannelStep;

/// How many pixels lie in one block of a tube's layout.
inline constexpr int kBlockPixels = 16;

[[nodiscard]] consteval std::uint16_t nearestWhole(double positive)
{
    const auto below = static_cast<std::uint16_t>(positive);
    return positive - below < 0.5 ? below : static_cast<std::uint16_t>(below + 1);
}

[[nodiscard]] consteval std::uint16_t opacityCode(double opacity)
{
    return nearestWhole(opacity * kOpaque);
}

/// What stands for 1 where the upper half of a product is the result, which is then a trace too small.
inline constexpr std::uint16_t kWhole = 65535;

/// What to multiply with to get this part of something, from 0 to 1.
[[nodiscard]] consteval std::uint16_t partCode(double part)
{
    return part * 65536.0 >= kWhole ? kWhole : nearestWhole(part * 65536.0);
}

/// Index of an element, from a number that is known not to be negative.
[[nodiscard]] constexpr std::size_t index(int number)
{
    return static_cast<std::size_t>(number);
}

} // namespace amperly::glass
