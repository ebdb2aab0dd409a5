// Timers on a clock that the caller moves. Nothing waits: moving the clock past a timer's next
// tick is what makes it fire, in order and each at its own instant.
#pragma once

#include "platform/repeating_timer.h"

#include <memory>
#include <vector>

namespace amperly {

class ManualTimerSource : public TimerSource {
public:
    /// `intervalSeconds` must be more than 0. A timer may outlive its source; it then fires no more.
    [[nodiscard]] std::unique_ptr<RepeatingTimer> start(
        double intervalSeconds, double toleranceSeconds, std::function<void()> action) override;

    /// Moves the clock, not backwards. Ticks on the way fire when the clock shows their time;
    /// what an action starts or ends counts from then on. Not to be called from an action.
    void advance(double seconds);

    /// Called with every stretch that the clock has moved, before the ticks at its end, so that
    /// something else can live by the same clock.
    void onTimePasses(std::function<void(double seconds)> handler) { m_timePasses = std::move(handler); }

    [[nodiscard]] double elapsedSeconds() const { return m_elapsedSeconds; }
    [[nodiscard]] int startedTimers() const { return m_startedTimers; } ///< ended ones included
    [[nodiscard]] int runningTimers() const;

private:
    struct Timer;
    class Handle;

    [[nodiscard]] std::shared_ptr<Timer> nextDue(double untilSeconds) const;
    void moveTo(double elapsedSeconds);

    std::vector<std::weak_ptr<Timer>> m_timers; ///< kept alive by their handles
    std::function<void(double)> m_timePasses;
    double m_elapsedSeconds = 0;
    int m_startedTimers = 0;
};

} // namespace amperly
