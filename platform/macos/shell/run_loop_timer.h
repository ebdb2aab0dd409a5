// Repeating timers on the main run loop. They fire in its common modes, hence also while a menu
// is open, and the system may let a tick come late by the tolerance to wake up once for several.
#pragma once

#include "platform/repeating_timer.h"

namespace amperly {

class RunLoopTimerSource : public TimerSource {
public:
    /// A timer may be ended by its own action.
    [[nodiscard]] std::unique_ptr<RepeatingTimer> start(
        double intervalSeconds, double toleranceSeconds, std::function<void()> action) override;
};

} // namespace amperly
