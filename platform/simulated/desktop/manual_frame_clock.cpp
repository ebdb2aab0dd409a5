#include "platform/simulated/desktop/manual_frame_clock.h"

#include <cmath>
#include <utility>

namespace amperly {

class ManualFrameClock::ManualRun : public FrameClock::Run {
public:
    explicit ManualRun(Frame frame) : action(std::make_shared<Frame>(std::move(frame))) { }
    std::shared_ptr<Frame> action;
};

std::unique_ptr<FrameClock::Run> ManualFrameClock::start(QWidget&, Frame frame)
{
    auto run = std::make_unique<ManualRun>(std::move(frame));
    m_current = run->action;
    return run;
}

void ManualFrameClock::advance(double seconds)
{
    m_now += seconds;
    // Held for the length of the call: the frame may end its own run.
    if (const std::shared_ptr<Frame> action = m_current.lock()) {
        ++m_frames;
        (*action)(m_now);
    }
}

void ManualFrameClock::play(double seconds, double rate)
{
    const auto count = std::lround(seconds * rate);
    for (long frame = 0; frame < count; ++frame)
        advance(1.0 / rate);
}

} // namespace amperly
