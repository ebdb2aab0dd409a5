#include "flow/glass/tube_profile.h"

#include "flow/glass/glass_look.h"
#include "flow/glass/pulse_train.h"

namespace amperly::glass {

TubeProfile tubeProfile(
    const CurveSamples& samples, const CurveNormals& normals, double width, double travelled)
{
    const PulseTrain pulses(travelled, samples.length());
    TubeProfile profile{};
    for (std::size_t i = 0; i < kCurveSampleCount; ++i) {
        const double k = pulses.swell(samples.lengths[i]);
        profile[i] = {.p = samples.points[i],
            .n = normals[i],
            .half = width * 0.5 * (1.0 + kGlassLook.swelling * k),
            .k = k};
    }
    return profile;
}

} // namespace amperly::glass
