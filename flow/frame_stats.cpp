#include "flow/frame_stats.h"

#include <algorithm>
#include <cstdlib>

namespace amperly {

bool FrameStats::enabled()
{
    static const bool asked = std::getenv("AMPERLY_FPS") != nullptr;
    return asked;
}

FrameStats& FrameStats::standard()
{
    static FrameStats stats(stdout);
    return stats;
}

void FrameStats::frame(double now)
{
    constexpr double kPeriod = 1.0; // seconds
    constexpr double kMillisecondsPerSecond = 1000.0;

    if (m_last)
        m_worstGap = std::max(m_worstGap, now - *m_last);
    else
        m_periodStart = now;
    m_last = now;
    ++m_count;
    const double elapsed = now - m_periodStart;
    if (elapsed < kPeriod)
        return;
    std::fprintf(
        m_output, "fps %.0f  worst gap %.0f ms\n", m_count / elapsed, m_worstGap * kMillisecondsPerSecond);
    std::fflush(m_output);
    m_count = 0;
    m_worstGap = 0.0;
    m_periodStart = now;
}

} // namespace amperly
