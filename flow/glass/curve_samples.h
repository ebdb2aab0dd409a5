// A curve as the points that everything drawn along it goes by.
#pragma once

#include "flow/glass/bezier.h"

#include <array>
#include <cstddef>

namespace amperly::glass {

inline constexpr std::size_t kCurveSampleCount = 97;

struct CurveSamples {
    std::array<FlowPoint, kCurveSampleCount>
        points; ///< evenly spaced in the curve's parameter, ends included
    std::array<double, kCurveSampleCount> lengths; ///< along the points, from 0 up to length()

    [[nodiscard]] double length() const { return lengths.back(); }
};

/// The point of `curve` at `t`, from 0 at its start to 1 at its end.
[[nodiscard]] FlowPoint pointOnCurve(const Bezier& curve, double t);

[[nodiscard]] CurveSamples sampleCurve(const Bezier& curve);

} // namespace amperly::glass
