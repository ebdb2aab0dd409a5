#include "flow/glass/swell_runs.h"

#include "flow/glass/glass_look.h"

#include <algorithm>

namespace amperly::glass {

SwellRuns::SwellRuns(const TubeProfile& profile)
{
    constexpr std::size_t kSectionsOfRun = 2;
    std::size_t first = 0;
    while (first < profile.size()) {
        std::size_t end = first;
        while (end < profile.size() && profile[end].k > kGlassLook.leastSwellOfRun)
            ++end;
        if (end - first >= kSectionsOfRun)
            m_runs[m_count++] = {first, end - 1};
        first = end + 1;
    }
}

double swellOfGradient(const TubeProfile& profile, const SwellRun& run, const FlowPoint& place)
{
    const FlowPoint& from = profile[run.first].p;
    const FlowPoint& to = profile[run.last].p;
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double square = dx * dx + dy * dy;
    if (square == 0.0)
        return profile[run.last].k;
    const double location
        = std::clamp(((place.x - from.x) * dx + (place.y - from.y) * dy) / square, 0.0, 1.0);
    const double stop = location * static_cast<double>(run.count() - 1);
    const std::size_t below = std::min(run.first + static_cast<std::size_t>(stop), run.last - 1);
    const double beyond = stop - static_cast<double>(below - run.first);
    return profile[below].k + (profile[below + 1].k - profile[below].k) * beyond;
}

} // namespace amperly::glass
