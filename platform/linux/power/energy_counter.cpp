#include "platform/linux/power/energy_counter.h"

namespace amperly {

namespace {

// The counter is updated about every millisecond; over less time than this its steps show.
constexpr double kShortestSeconds = 0.1;
// A mean over more time is not what flows now; in between the machine may have slept.
constexpr double kLongestSeconds = 120.0;

} // namespace

std::optional<double> EnergyCounter::watts(std::int64_t microjoules, double seconds)
{
    if (m_last && seconds - m_last->seconds < kShortestSeconds)
        return m_watts;

    m_watts.reset();
    if (m_last && seconds - m_last->seconds <= kLongestSeconds) {
        std::int64_t difference = microjoules - m_last->microjoules;
        if (difference < 0 && m_range > 0)
            difference += m_range;
        if (difference > 0)
            m_watts = static_cast<double>(difference) / 1e6 / (seconds - m_last->seconds);
    }
    m_last = Point{microjoules, seconds};
    return m_watts;
}

} // namespace amperly
