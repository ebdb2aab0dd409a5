#include "platform/linux/clock/timer_slack.h"

#include "platform/linux/memory/visible_windows.h"

#include <QEvent>
#include <QGuiApplication>
#include <QWindow>

#include <algorithm>
#include <limits>
#include <sys/prctl.h>

namespace amperly {
namespace {

unsigned long inNanoseconds(double seconds)
{
    constexpr double kNanosecondsPerSecond = 1e9;
    constexpr auto kMost = static_cast<double>(std::numeric_limits<long>::max()) / 2.0;
    return static_cast<unsigned long>(std::clamp(seconds * kNanosecondsPerSecond, 0.0, kMost));
}

} // namespace

TimerSlack::TimerSlack() : m_windowVisible(anyWindowVisible())
{
    qApp->installEventFilter(this);
}

TimerSlack::~TimerSlack()
{
    prctl(PR_SET_TIMERSLACK, 0UL);
}

void TimerSlack::addTolerance(double seconds)
{
    m_tolerances.insert(seconds);
    apply();
}

void TimerSlack::removeTolerance(double seconds)
{
    if (const auto found = m_tolerances.find(seconds); found != m_tolerances.end())
        m_tolerances.erase(found);
    apply();
}

bool TimerSlack::eventFilter(QObject* watched, QEvent* event)
{
    // Events of windows alone: a widget's own showing follows from its window's.
    const QEvent::Type type = event->type();
    if ((type == QEvent::Show || type == QEvent::Hide) && watched->isWindowType()) {
        m_windowVisible = anyWindowVisible();
        apply();
    }
    return false;
}

void TimerSlack::apply()
{
    const bool exact = m_windowVisible || m_holds > 0 || m_tolerances.empty();
    const unsigned long wanted = exact ? 0 : inNanoseconds(*m_tolerances.begin());
    if (wanted == m_nanoseconds)
        return;
    m_nanoseconds = wanted;
    prctl(PR_SET_TIMERSLACK, wanted); // 0 brings the thread's default back
}

TimerSlack::ExactHold::ExactHold(TimerSlack& slack) : m_slack(slack)
{
    ++m_slack.m_holds;
    m_slack.apply();
}

TimerSlack::ExactHold::~ExactHold()
{
    --m_slack.m_holds;
    m_slack.apply();
}

} // namespace amperly
