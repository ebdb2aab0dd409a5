// Where a point is along and across a tube.
#pragma once

#include "flow/glass/curve.h"

#include <cstddef>

namespace amperly::glass {

/// Points, but for `sample` and `beyond`.
struct TubeCoordinates {
    std::size_t sample = 0; ///< the curve's sample before the foot on the centre line
    double beyond = 0.0; ///< how much of the way to the next sample the foot is, from 0 to 1
    double arc = 0.0; ///< along the centre line
    double distance = 0.0; ///< from the foot, positive on the upper side
    double inside = 0.0; ///< from the nearer end, negative before the start and behind the end
};

/// Finds the coordinates of points near one tube.
class TubeLocator {
public:
    /// Both are borrowed.
    TubeLocator(const CurveSamples& samples, const CurveNormals& normals);

    /// From here on only the samples that can be the nearest to a point within `radius` of `centre`
    /// are looked at. False if none is within `reach` of any such point.
    bool narrow(const FlowPoint& centre, double radius, double reach);

    /// The coordinates of a point that narrow() was told of.
    [[nodiscard]] TubeCoordinates locate(const FlowPoint& point) const;

private:
    /// How far `point` is ahead of a sample, along the tube.
    [[nodiscard]] double ahead(const FlowPoint& point, std::size_t sample) const;

    const CurveSamples& m_samples;
    const CurveNormals& m_normals;
    FlowPoint m_least; ///< the corners of the box around all samples
    FlowPoint m_most;
    double m_halfSection = 0.0; ///< of the longest section
    double m_side; ///< see upperSide(): it tells to which side of the tangent normals were turned
    std::size_t m_firstCandidate = 0;
    std::size_t m_lastCandidate = kCurveSampleCount - 1;
};

} // namespace amperly::glass
