#include "flow/glass/pulse_train.h"

#include "flow/glass/glass_look.h"

#include <algorithm>
#include <cmath>

namespace amperly::glass {

namespace {

constexpr double kSpacing = kGlassLook.pulseSpacing;

// A pulse further away than this adds less than 1e-9.
constexpr double kReach = 6.5 * kGlassLook.pulseSigma;

} // namespace

PulseTrain::PulseTrain(double travelled, double length)
    : m_first(std::fmod(travelled, kSpacing) - kSpacing), m_length(length)
{
    const double last = length + kSpacing;
    if (m_first <= last) // not so for a distance that is no number
        m_count = static_cast<int>(std::floor((last - m_first) / kSpacing)) + 1;
}

double PulseTrain::centre(int index) const
{
    return m_first + index * kSpacing;
}

double PulseTrain::swell(double position) const
{
    const double taper = endTaper(position, m_length);
    if (taper == 0.0)
        return 0.0;
    double sum = 0.0;
    const int firstNear = std::max(0, static_cast<int>(std::ceil((position - kReach - m_first) / kSpacing)));
    for (int index = firstNear; index < m_count && centre(index) < position + kReach; ++index) {
        const double sigmas = (position - centre(index)) / kGlassLook.pulseSigma;
        sum += std::exp(-0.5 * sigmas * sigmas);
    }
    return std::min(sum, 1.0) * taper;
}

double endTaper(double position, double length)
{
    const double e = std::clamp(std::min(position, length - position) / kGlassLook.endTaper, 0.0, 1.0);
    return e * e * (3.0 - 2.0 * e);
}

} // namespace amperly::glass
