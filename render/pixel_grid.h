// From points to whole pixels.
#pragma once

#include <cmath>

namespace amperly {

/// Arithmetic leaves a trace on whole numbers, which must not cost a pixel.
inline constexpr double kPixelTrace = 1e-6;

/// The least number of pixels that holds `length` pixels.
[[nodiscard]] inline int pixelsUp(double length)
{
    return static_cast<int>(std::ceil(length - kPixelTrace));
}

/// The pixel edge nearest to `position`. From the middle of a pixel it is the upper or left one:
/// figures and symbols then agree, and what stands between two rows looks centred a little high
/// rather than low.
[[nodiscard]] inline int nearestPixel(double position)
{
    return static_cast<int>(std::ceil(position - 0.5 - kPixelTrace));
}

} // namespace amperly
