#include "flow/glass/tube_glints.h"

#include "flow/glass/glass_look.h"

#include <algorithm>

namespace amperly::glass {

TubeGlints::TubeGlints(const TubeProfile& profile, double width)
{
    for (std::size_t i = 1; i + 1 < profile.size(); ++i) {
        const double k = profile[i].k;
        const bool isPeak = profile[i - 1].k <= k && profile[i + 1].k < k;
        if (k <= kGlassLook.leastSwellOfGlint || !isPeak)
            continue;
        m_glints[m_count++] = {.centre = profile[i].at(kGlassLook.glintPosition),
            .size = std::max(width * kGlassLook.glintSize, kGlassLook.leastGlintSize) * k,
            .k = k};
    }
}

} // namespace amperly::glass
