#include "flow/glass/curve_samples.h"

#include <cmath>

namespace amperly::glass {

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

} // namespace amperly::glass
