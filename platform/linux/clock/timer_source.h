// Repeating timers on the toolkit's event loop. Their phase does not drift; what a tick may come
// late is left to the kernel through the thread's timer slack.
#pragma once

#include "platform/linux/clock/timer_slack.h"
#include "platform/repeating_timer.h"

namespace amperly {

class QtTimerSource : public TimerSource {
public:
    /// `slack` must outlive the source and its timers.
    explicit QtTimerSource(TimerSlack& slack) : m_slack(slack) { }

    /// Intervals are kept to the millisecond, at least one. A timer may be ended by its own action.
    [[nodiscard]] std::unique_ptr<RepeatingTimer> start(
        double intervalSeconds, double toleranceSeconds, std::function<void()> action) override;

private:
    TimerSlack& m_slack;
};

} // namespace amperly
