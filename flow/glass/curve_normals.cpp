#include "flow/glass/curve_normals.h"

#include <algorithm>
#include <cmath>

namespace amperly::glass {

namespace {

constexpr double kLeastTangent = 0.0001;
constexpr double kNearlyVertical = 0.001; // the normal's y, below which the tube counts as standing

} // namespace

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

} // namespace amperly::glass
