#include "flow/glass/tube_profile.h"

#include "flow/glass/glass_look.h"
#include "flow/glass/pulse_train.h"

#include <algorithm>

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

AlongTube<SwellRun> swellRuns(const TubeProfile& profile)
{
    constexpr std::size_t kSectionsOfRun = 2;
    AlongTube<SwellRun> runs;
    std::size_t first = 0;
    while (first < profile.size()) {
        std::size_t end = first;
        while (end < profile.size() && profile[end].k > kGlassLook.leastSwellOfRun)
            ++end;
        if (end - first >= kSectionsOfRun)
            runs.add({first, end - 1});
        first = end + 1;
    }
    return runs;
}

double swellOfGradient(const TubeProfile& profile, const SwellRun& run, const FlowPoint& point)
{
    const double location = gradientLocation(profile[run.first].p, profile[run.last].p, point);
    const double stop = location * static_cast<double>(run.count() - 1);
    const std::size_t below = std::min(run.first + static_cast<std::size_t>(stop), run.last - 1);
    const double beyond = stop - static_cast<double>(below - run.first);
    return profile[below].k + (profile[below + 1].k - profile[below].k) * beyond;
}

} // namespace amperly::glass
