#include "platform/linux/clock/display_frames.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace amperly {

namespace {

double steadySeconds()
{
    const std::chrono::duration<double> now = std::chrono::steady_clock::now().time_since_epoch();
    return now.count();
}

constexpr double kSlowest = 20.0; // frames a second
constexpr double kFastest = 500.0;
constexpr double kUsual = 60.0;

bool compositorAnnouncesFrames()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

class DisplayRun : public QObject, public FrameClock::Run {
public:
    /// What a run asks for, and how often.
    struct Inputs {
        std::function<bool()> savesPower;
        DisplayFrames::VisibilityOf visibilityOf;
        double everySeconds;
    };

    DisplayRun(QWindow& window, FrameClock::Frame frame, Inputs inputs)
        : m_window(&window)
        , m_frame(std::make_shared<FrameClock::Frame>(std::move(frame)))
        , m_inputs(std::move(inputs))
        , m_announced(compositorAnnouncesFrames())
        , m_gentle(m_inputs.savesPower())
        , m_pace(rate())
    {
        m_timer.setSingleShot(true);
        m_timer.setTimerType(Qt::PreciseTimer);
        connect(&m_timer, &QTimer::timeout, this, [this] { due(); });
        m_visibility = m_inputs.visibilityOf(window, [this] { follow(); });
        window.installEventFilter(this);
        follow();
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::UpdateRequest:
            if (!std::exchange(m_asked, false))
                return false;
            if (m_running)
                show();
            return true; // the toolkit would take it for a wish to paint the whole window
        case QEvent::Expose:
        case QEvent::Show:
        case QEvent::Hide:
            // After the window itself has heard of it.
            QMetaObject::invokeMethod(
                this, [this] { follow(); }, Qt::QueuedConnection);
            break;
        default:
            break;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    [[nodiscard]] double rate() const
    {
        const double screen = m_window->screen() == nullptr ? 0.0 : m_window->screen()->refreshRate();
        const double usual = 1.0 / FramePace(screen).periodSeconds();
        return m_gentle ? std::min(usual, DisplayFrames::kGentleRate) : usual;
    }

    /// Asks for what nobody announces: the window may be on another screen by now, too.
    void check()
    {
        m_gentle = m_inputs.savesPower();
        m_screenOff = m_visibility && m_visibility->isScreenOff();
        const FramePace pace(rate());
        if (pace.periodSeconds() != m_pace.periodSeconds())
            m_pace = pace;
    }

    [[nodiscard]] bool isSeen() const
    {
        return m_window && m_window->isVisible() && m_window->isExposed()
            && !(m_visibility && m_visibility->isCovered());
    }

    /// Starts or stops with what there is to see.
    void follow()
    {
        const bool seen = isSeen();
        if (seen == m_running)
            return;
        m_running = seen;
        m_timer.stop();
        if (m_running)
            due();
    }

    /// It is time for a frame, as far as the pace is concerned.
    void due()
    {
        const double now = steadySeconds();
        if (now - m_checkedAt >= m_inputs.everySeconds) {
            m_checkedAt = now;
            check();
        }
        if (m_screenOff) {
            wait(m_inputs.everySeconds);
        } else if (m_announced) {
            m_asked = true;
            m_window->requestUpdate();
        } else {
            show();
        }
    }

    void show()
    {
        const double now = steadySeconds();
        const double next = m_pace.dueAfter(now);
        // Without a picture to wait for, a compositor lets frames come at once.
        if (!m_announced || m_gentle || now - std::exchange(m_shownAt, now) < m_pace.periodSeconds() / 4.0)
            wait(next - now);
        const QPointer<DisplayRun> self(this);
        const std::shared_ptr<FrameClock::Frame> held = m_frame;
        (*held)(now);
        // The next is asked for after this one has been painted: only then is there something to
        // wait for.
        if (self && m_running && !m_timer.isActive())
            due();
    }

    void wait(double seconds)
    {
        constexpr double kMillisecondsPerSecond = 1000.0;
        m_timer.start(static_cast<int>(std::lround(std::max(seconds, 0.0) * kMillisecondsPerSecond)));
    }

    QPointer<QWindow> m_window;
    std::shared_ptr<FrameClock::Frame> m_frame;
    Inputs m_inputs;
    bool m_announced;
    bool m_gentle;
    FramePace m_pace;
    std::unique_ptr<WindowVisibility> m_visibility;
    QTimer m_timer;
    bool m_running = false;
    bool m_asked = false;
    bool m_screenOff = false;
    double m_checkedAt = 0.0;
    double m_shownAt = 0.0;
};

/// Of a window that is not there to be seen.
class NoRun : public FrameClock::Run { };

} // namespace

FramePace::FramePace(double rate) : m_period(1.0 / (rate >= kSlowest && rate <= kFastest ? rate : kUsual)) { }

double FramePace::dueAfter(double now)
{
    m_due += m_period;
    if (m_due <= now || m_due > now + m_period)
        m_due = now + m_period;
    return m_due;
}

DisplayFrames::DisplayFrames(std::function<bool()> savesPower, VisibilityOf visibilityOf, double checkSeconds)
    : m_savesPower(std::move(savesPower))
    , m_visibilityOf(std::move(visibilityOf))
    , m_checkSeconds(checkSeconds)
{
}

std::unique_ptr<WindowVisibility> DisplayFrames::onX11(QWindow& window, std::function<void()> changed)
{
    return x11WindowVisibility(static_cast<std::uint32_t>(window.winId()), std::move(changed));
}

std::unique_ptr<FrameClock::Run> DisplayFrames::start(QWidget& widget, Frame frame)
{
    QWindow* const window = widget.window()->windowHandle();
    if (window == nullptr)
        return std::make_unique<NoRun>();
    return std::make_unique<DisplayRun>(
        *window, std::move(frame), DisplayRun::Inputs{m_savesPower, m_visibilityOf, m_checkSeconds});
}

} // namespace amperly
