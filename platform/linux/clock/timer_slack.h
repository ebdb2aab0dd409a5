// How far the kernel may shift this thread's waking so that the processor wakes once for several
// programs. While nothing of the program is on screen, a tick may come late by its timer's whole
// tolerance; as soon as a window is up or something moves, lateness would be seen, and the
// kernel's own default is in force again.
//
// One object serves the event loop's thread; it is made, used and destroyed there, after the
// application object was made.
#pragma once

#include <QObject>
#include <set>

namespace amperly {

class TimerSlack : public QObject {
public:
    TimerSlack();
    ~TimerSlack() override;

    /// Says that a timer with this tolerance runs, and that it ends. The smallest tolerance of
    /// all running timers counts.
    void addTolerance(double seconds);
    void removeTolerance(double seconds);

    /// While one lives, ticks and time-outs are exact. For whatever moves or reacts without a window.
    class ExactHold {
    public:
        explicit ExactHold(TimerSlack& slack);
        ~ExactHold();
        ExactHold(const ExactHold&) = delete;
        ExactHold& operator=(const ExactHold&) = delete;

    private:
        TimerSlack& m_slack;
    };

protected:
    /// Follows the showing and hiding of the program's windows, menus included.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void apply();

    std::multiset<double> m_tolerances; ///< seconds
    int m_holds = 0;
    bool m_windowVisible = false;
    unsigned long m_nanoseconds = 0; ///< in force; 0 is the kernel's default
};

} // namespace amperly
