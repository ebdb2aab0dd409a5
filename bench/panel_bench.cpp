// What the open panel costs: processor time for its frames, beside a window of the same size that
// only fills itself, what is left of it after closing, or memory over many openings. Runs on
// whatever display it is started on and prints its figures as JSON.

#include "flow/flow_panel.h"
#include "platform/linux/clock/display_frames.h"
#include "platform/linux/memory/memory_trimming.h"
#include "platform/linux/popover/linux_popover_host.h"
#include "platform/linux/text/linux_ui_font.h"
#include "platform/simulated/desktop/fixed_display_settings.h"
#include "platform/simulated/desktop/recording_desktop.h"
#include "render/status_art.h"
#include "telemetry/live_model.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QPainter>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace amperly {
namespace {

constexpr int kSettleMilliseconds = 1500; // the panel has grown in, the flows have settled
constexpr int kSampleMilliseconds = 1000; // between readings, as while the real panel is open

struct Usage {
    double cpuMilliseconds = 0.0;
    long wakeUps = 0;
};

/// Of all threads of this process so far.
Usage usage()
{
    Usage sum;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        double nanoseconds = 0.0;
        std::ifstream(thread.path() / "schedstat") >> nanoseconds;
        sum.cpuMilliseconds += nanoseconds / 1e6;
        std::ifstream status(thread.path() / "status");
        const std::string key = "voluntary_ctxt_switches:";
        for (std::string line; std::getline(status, line);) {
            if (line.starts_with(key))
                sum.wakeUps += std::atol(line.c_str() + key.size());
        }
    }
    return sum;
}

long privateDirtyKilobytes()
{
    std::ifstream rollup("/proc/self/smaps_rollup");
    const std::string key = "Private_Dirty:";
    for (std::string line; std::getline(rollup, line);) {
        if (line.starts_with(key))
            return std::atol(line.c_str() + key.size());
    }
    return 0;
}

void wait(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Frames of the display, counted.
class CountedFrames : public FrameClock {
public:
    std::unique_ptr<Run> start(QWidget& widget, Frame frame) override
    {
        return m_frames.start(widget, [this, act = std::move(frame)](double now) {
            ++count;
            act(now);
        });
    }

    long count = 0;

private:
    DisplayFrames m_frames{[] { return false; }};
};

/// The yardstick: as large as the panel, and at each frame filled with another colour.
class FillingWindow : public QWidget {
public:
    FillingWindow(QSize size, FrameClock& frames) : m_frames(frames)
    {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setFixedSize(size);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), QColor::fromHsv(m_hue = (m_hue + 1) % 360, 60, 220));
    }
    void showEvent(QShowEvent* event) override
    {
        QWidget::showEvent(event);
        m_run = m_frames.start(*this, [this](double) { repaint(); });
    }
    void hideEvent(QHideEvent* event) override
    {
        m_run.reset();
        QWidget::hideEvent(event);
    }

private:
    FrameClock& m_frames;
    int m_hue = 0;
    std::unique_ptr<FrameClock::Run> m_run;
};

class PanelBench {
public:
    PanelBench()
    {
        read();
        m_readings.setInterval(kSampleMilliseconds);
        QObject::connect(&m_readings, &QTimer::timeout, [this] { read(); });
        m_readings.start();
    }

    /// Opens the panel, or the yardstick, and lets it settle.
    void openPanel()
    {
        open(std::make_unique<FlowPanel>(m_live, services(), [] {}));
    }
    void openYardstick(QSize size) { open(std::make_unique<FillingWindow>(size, frames)); }

    void close()
    {
        m_host.close();
        wait(100);
    }

    [[nodiscard]] QSize panelSize()
    {
        const FlowPanel panel(m_live, services(), [] {});
        return panel.sizeHint();
    }

    struct Window {
        double cpuMilliseconds = 0.0;
        long wakeUps = 0;
        long frames = 0;
    };
    Window watch(int milliseconds)
    {
        const Usage before = usage();
        const long framesBefore = frames.count;
        wait(milliseconds);
        const Usage after = usage();
        return {after.cpuMilliseconds - before.cpuMilliseconds, after.wakeUps - before.wakeUps,
            frames.count - framesBefore};
    }

    void stopReading() { m_readings.stop(); }

    CountedFrames frames;

private:
    PanelServices services() { return {.desktop = m_desktop, .frames = frames, .display = m_display}; }

    void open(std::unique_ptr<QWidget> content)
    {
        m_host.show(std::move(content), ScreenPoint{200, 30});
        wait(kSettleMilliseconds);
    }

    /// A laptop that charges while it works: two flows, and every figure differs from the one before.
    void read()
    {
        constexpr int kSteps = 7;
        const double step = 0.3 * static_cast<double>(++m_turn % kSteps);
        m_live.setSample(PowerSample{.systemLoad = 14.2 + step,
            .adapterIn = 30.1 + 2.0 * step,
            .battery = 15.9 + step,
            .adapterRating = 67,
            .batteryPercent = 64,
            .externalConnected = true});
    }

    RecordingDesktop m_desktop;
    FixedDisplaySettings m_display;
    LiveModel m_live;
    TimerSlack m_slack;
    LinuxPopoverHost m_host{m_slack};
    QTimer m_readings;
    int m_turn = 0;
};

std::string json(const PanelBench::Window& window)
{
    std::ostringstream text;
    text << R"({"cpu_ms": )" << window.cpuMilliseconds << R"(, "wake_ups": )" << window.wakeUps
         << R"(, "frames": )" << window.frames << '}';
    return text.str();
}

std::string json(long number)
{
    return std::to_string(number);
}

template <typename Value>
std::string json(const std::vector<Value>& values)
{
    std::string text = "[";
    for (const Value& value : values)
        text += (text.size() > 1 ? ", " : "") + json(value);
    return text + "]";
}

void compareFrames(int pairs)
{
    PanelBench bench;
    constexpr int kWindowMilliseconds = 2000;
    constexpr int kSecond = 1000;

    const QSize size = bench.panelSize();
    std::vector<PanelBench::Window> panel;
    std::vector<PanelBench::Window> yardstick;
    for (int pair = 0; pair < pairs; ++pair) {
        bench.openPanel();
        panel.push_back(bench.watch(kWindowMilliseconds));
        bench.close();
        bench.openYardstick(size);
        yardstick.push_back(bench.watch(kWindowMilliseconds));
        bench.close();
    }

    // Without readings nothing at all is left to do, as in any second with no panel.
    bench.stopReading();
    wait(kSecond);
    const PanelBench::Window never = bench.watch(kSecond);
    bench.openPanel();
    bench.close();
    const PanelBench::Window closed = bench.watch(kSecond);

    std::printf("{\"panel\": %s,\n \"yardstick\": %s,\n \"at_rest\": %s, \"closed\": %s}\n",
        json(panel).c_str(), json(yardstick).c_str(), json(never).c_str(), json(closed).c_str());
}

/// Opens and closes the panel so often, each time giving back what the program at rest does, and once more.
void repeatOpenings(int openings)
{
    PanelBench bench;
    std::vector<long> open;
    std::vector<long> closed;
    for (int opening = 0; opening <= openings; ++opening) {
        bench.openPanel();
        open.push_back(privateDirtyKilobytes());
        bench.close();
        trimMemory();
        closed.push_back(privateDirtyKilobytes());
    }
    std::printf("{\"open_kb\": %s, \"closed_kb\": %s}\n", json(open).c_str(), json(closed).c_str());
}

} // namespace
} // namespace amperly

int main(int argc, char** argv)
{
    using namespace amperly;
    const std::string_view wish = argc == 3 ? argv[1] : "";
    if (wish != "frames" && wish != "openings") {
        std::fputs("usage: panel_bench frames PAIRS | openings COUNT\n", stderr);
        return 2;
    }
    keepLargeBlocksApart();
    qputenv("QT_NO_GLIB", "1");
    allowLayerWindows();
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const LinuxUiFont font(QApplication::font().family().toStdString());
    StatusArt art(font);
    const Injected<StatusArt> inForce(art);
    if (wish == "frames")
        compareFrames(std::atoi(argv[2]));
    else
        repeatOpenings(std::atoi(argv[2]));
    return EXIT_SUCCESS;
}
