// The shape of a tube at one moment. Everything drawn of it goes by this alone.
#pragma once

#include "flow/glass/curve_normals.h"
#include "flow/glass/curve_samples.h"

#include <array>

namespace amperly::glass {

/// The tube where one of the curve's samples is. Points.
struct TubeSection {
    FlowPoint p; ///< on the centre line
    FlowPoint n; ///< unit normal, to the upper side
    double half = 0.0; ///< half width
    double k = 0.0; ///< how much it swells, from 0 to 1

    /// Away from the centre line by `fraction` of the half width.
    [[nodiscard]] FlowPoint at(double fraction) const
    {
        return {p.x + n.x * half * fraction, p.y + n.y * half * fraction};
    }
};

using TubeProfile = std::array<TubeSection, kCurveSampleCount>;

/// The tube along `samples` with `normals` to its upper side, `width` points wide where no pulse
/// is, after its pulses have moved by `travelled` points.
[[nodiscard]] TubeProfile tubeProfile(
    const CurveSamples& samples, const CurveNormals& normals, double width, double travelled);

} // namespace amperly::glass
