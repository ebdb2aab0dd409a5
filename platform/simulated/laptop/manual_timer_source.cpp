#include "platform/simulated/laptop/manual_timer_source.h"

#include <algorithm>

namespace amperly {

struct ManualTimerSource::Timer {
    double intervalSeconds;
    double toleranceSeconds;
    std::function<void()> action;
    double startedAtSeconds;
    double ticks = 0;

    // Counted from the start, so that the rounding of many additions does not shift late ticks.
    [[nodiscard]] double dueSeconds() const { return startedAtSeconds + (ticks + 1) * intervalSeconds; }
};

class ManualTimerSource::Handle : public RepeatingTimer {
public:
    explicit Handle(std::shared_ptr<Timer> timer) : m_timer(std::move(timer)) { }

    [[nodiscard]] double intervalSeconds() const override { return m_timer->intervalSeconds; }
    [[nodiscard]] double toleranceSeconds() const override { return m_timer->toleranceSeconds; }

private:
    std::shared_ptr<Timer> m_timer;
};

std::unique_ptr<RepeatingTimer> ManualTimerSource::start(
    double intervalSeconds, double toleranceSeconds, std::function<void()> action)
{
    ++m_startedTimers;
    const auto timer = std::make_shared<Timer>(
        Timer{intervalSeconds, toleranceSeconds, std::move(action), m_elapsedSeconds});
    std::erase_if(m_timers, [](const std::weak_ptr<Timer>& ended) { return ended.expired(); });
    m_timers.push_back(timer);
    return std::make_unique<Handle>(timer);
}

void ManualTimerSource::advance(double seconds)
{
    const double target = m_elapsedSeconds + seconds;
    // The timer is held while it fires, for its action may well end it.
    while (const std::shared_ptr<Timer> timer = nextDue(target)) {
        moveTo(timer->dueSeconds());
        timer->ticks += 1;
        timer->action();
    }
    moveTo(target);
}

std::shared_ptr<ManualTimerSource::Timer> ManualTimerSource::nextDue(double untilSeconds) const
{
    std::shared_ptr<Timer> next;
    for (const std::weak_ptr<Timer>& candidate : m_timers) {
        const std::shared_ptr<Timer> timer = candidate.lock();
        if (timer && timer->dueSeconds() <= untilSeconds
            && (!next || timer->dueSeconds() < next->dueSeconds()))
            next = timer;
    }
    return next;
}

void ManualTimerSource::moveTo(double elapsedSeconds)
{
    const double passed = elapsedSeconds - m_elapsedSeconds;
    m_elapsedSeconds = elapsedSeconds;
    if (passed > 0 && m_timePasses)
        m_timePasses(passed);
}

int ManualTimerSource::runningTimers() const
{
    return static_cast<int>(std::count_if(m_timers.begin(), m_timers.end(),
        [](const std::weak_ptr<Timer>& timer) { return !timer.expired(); }));
}

} // namespace amperly
