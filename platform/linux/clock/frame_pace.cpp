#include "platform/linux/clock/frame_pace.h"

namespace amperly {

namespace {

constexpr double kSlowest = 20.0; // frames a second
constexpr double kFastest = 500.0;
constexpr double kUsual = 60.0;

} // namespace

FramePace::FramePace(double rate) : m_period(1.0 / (rate >= kSlowest && rate <= kFastest ? rate : kUsual)) { }

double FramePace::dueAfter(double now)
{
    m_due += m_period;
    if (m_due <= now || m_due > now + m_period)
        m_due = now + m_period;
    return m_due;
}

} // namespace amperly
