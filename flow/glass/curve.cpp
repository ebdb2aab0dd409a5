#include "flow/glass/curve.h"

#include <algorithm>
#include <cmath>

namespace amperly::glass {

namespace {

constexpr double kLeastTangent = 0.0001;
constexpr double kNearlyVertical = 0.001; // the normal's y, below which the tube counts as vertical

/// The point of `curve` at `t`, from 0 at its start to 1 at its end.
FlowPoint pointOnCurve(const Bezier& curve, double t)
{
    const double u = 1.0 - t;
    const double b0 = u * u * u;
    const double b1 = 3.0 * u * u * t;
    const double b2 = 3.0 * u * t * t;
    const double b3 = t * t * t;
    return {b0 * curve.p0.x + b1 * curve.p1.x + b2 * curve.p2.x + b3 * curve.p3.x,
        b0 * curve.p0.y + b1 * curve.p1.y + b2 * curve.p2.y + b3 * curve.p3.y};
}

} // namespace

CurveSamples sampleCurve(const Bezier& curve)
{
    CurveSamples samples{};
    for (std::size_t i = 0; i < kCurveSampleCount; ++i) {
        samples.points[i] = pointOnCurve(curve, static_cast<double>(i) / (kCurveSampleCount - 1));
        if (i == 0)
            continue;
        const FlowPoint& from = samples.points[i - 1];
        const FlowPoint& to = samples.points[i];
        samples.lengths[i] = samples.lengths[i - 1] + std::hypot(to.x - from.x, to.y - from.y);
    }
    return samples;
}

CurveNormals unitNormals(const CurveSamples& samples)
{
    constexpr std::size_t kLast = kCurveSampleCount - 1;
    CurveNormals normals{};
    for (std::size_t i = 0; i < kCurveSampleCount; ++i) {
        const FlowPoint& before = samples.points[i == 0 ? 0 : i - 1];
        const FlowPoint& after = samples.points[std::min(i + 1, kLast)];
        const double dx = after.x - before.x;
        const double dy = after.y - before.y;
        const double length = std::max(std::hypot(dx, dy), kLeastTangent);
        normals[i] = {-dy / length, dx / length};
    }
    return normals;
}

double upperSide(const CurveNormals& normals)
{
    const FlowPoint& middle = normals[kCurveSampleCount / 2];
    if (middle.y > kNearlyVertical)
        return -1.0;
    if (middle.y < -kNearlyVertical)
        return 1.0;
    return middle.x > 0.0 ? -1.0 : 1.0;
}

CurveNormals orientedNormals(const CurveSamples& samples)
{
    CurveNormals normals = unitNormals(samples);
    const double side = upperSide(normals);
    for (FlowPoint& normal : normals)
        normal = {normal.x * side, normal.y * side};
    return normals;
}

double gradientLocation(const FlowPoint& from, const FlowPoint& to, const FlowPoint& point)
{
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double square = dx * dx + dy * dy;
    if (square == 0.0)
        return 1.0;
    return std::clamp(((point.x - from.x) * dx + (point.y - from.y) * dy) / square, 0.0, 1.0);
}

} // namespace amperly::glass
