#include "platform/linux/clock/timer_source.h"

#include <QTimer>

#include <algorithm>
#include <cmath>
#include <limits>

namespace amperly {
namespace {

int inMilliseconds(double seconds)
{
    constexpr double kMillisecondsPerSecond = 1000.0;
    constexpr auto kMost = static_cast<double>(std::numeric_limits<int>::max());
    return static_cast<int>(std::clamp(std::round(seconds * kMillisecondsPerSecond), 1.0, kMost));
}

class QtRepeatingTimer : public RepeatingTimer {
public:
    QtRepeatingTimer(TimerSlack& slack, double interval, double tolerance, std::function<void()> action)
        : m_slack(slack)
        , m_interval(interval)
        , m_tolerance(tolerance)
        , m_action(std::make_shared<std::function<void()>>(std::move(action)))
    {
        // The action may end this timer, so it is held for the length of a call.
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            const std::shared_ptr<std::function<void()>> held = m_action;
            (*held)();
        });
        // Coarse timers would round to whole seconds and shift the phase by themselves.
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.start(inMilliseconds(interval));
        m_slack.addTolerance(m_tolerance);
    }

    ~QtRepeatingTimer() override { m_slack.removeTolerance(m_tolerance); }

    [[nodiscard]] double intervalSeconds() const override { return m_interval; }
    [[nodiscard]] double toleranceSeconds() const override { return m_tolerance; }

private:
    TimerSlack& m_slack;
    double m_interval;
    double m_tolerance;
    std::shared_ptr<std::function<void()>> m_action;
    QTimer m_timer;
};

} // namespace

std::unique_ptr<RepeatingTimer> QtTimerSource::start(
    double intervalSeconds, double toleranceSeconds, std::function<void()> action)
{
    return std::make_unique<QtRepeatingTimer>(m_slack, intervalSeconds, toleranceSeconds, std::move(action));
}

} // namespace amperly
