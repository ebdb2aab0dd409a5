// The cubic curves that flows follow, and what everything drawn along one goes by: points at even
// steps, and which way is across at each of them.
#pragma once

#include <array>
#include <cstddef>

namespace amperly {

/// Points of the diagram, y growing downward.
struct FlowPoint {
    double x = 0.0;
    double y = 0.0;
    friend bool operator==(const FlowPoint&, const FlowPoint&) = default;
};

/// The way that a flow takes from one node of the diagram to another: from `p0` to `p3`.
struct Bezier {
    FlowPoint p0;
    FlowPoint p1;
    FlowPoint p2;
    FlowPoint p3;
    friend bool operator==(const Bezier&, const Bezier&) = default;
};

} // namespace amperly

namespace amperly::glass {

inline constexpr std::size_t kCurveSampleCount = 97;

struct CurveSamples {
    std::array<FlowPoint, kCurveSampleCount>
        points; ///< evenly spaced in the curve's parameter, ends included
    std::array<double, kCurveSampleCount> lengths; ///< along the points, from 0 up to length()

    [[nodiscard]] double length() const { return lengths.back(); }
};

[[nodiscard]] CurveSamples sampleCurve(const Bezier& curve);

using CurveNormals = std::array<FlowPoint, kCurveSampleCount>;

/// Unit normals, the tangents turned from x towards y. Where points coincide they are shorter.
[[nodiscard]] CurveNormals unitNormals(const CurveSamples& samples);

/// 1 or -1: what the normals have to be multiplied with to point to the upper side on the screen,
/// and to the left side of a vertical tube. Light falls on that side. The curve's middle decides
/// for all of it.
[[nodiscard]] double upperSide(const CurveNormals& normals);

/// Unit normals that point to the upper side.
[[nodiscard]] CurveNormals orientedNormals(const CurveSamples& samples);

/// Where `point` is on a linear gradient, from 0 at `from` and before it to 1 at `to` and behind it.
/// All of a gradient that has no length is its end.
[[nodiscard]] double gradientLocation(const FlowPoint& from, const FlowPoint& to, const FlowPoint& point);

} // namespace amperly::glass
