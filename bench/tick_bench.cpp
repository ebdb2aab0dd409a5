// Measures one tick of the program: reading the power files, working out the figures, and making
// texts and picture for whatever shows differently. Beside it stands a yardstick, six reads of
// open files, measured in the same process, on the same core, turn by turn.
//
//     tick_bench                  writes all figures as JSON
//     tick_bench LOOP COUNT       runs one loop and nothing else, for a tool that counts
//                                 instructions in measured…() alone

#include "app/app_delegate.h"
#include "bench/bench_laptop.h"
#include "bench/drawing_status_item.h"
#include "bench/heap_count.h"
#include "bench/timing.h"
#include "platform/linux/power/linux_power_source.h"
#include "platform/linux/power/posix_files.h"
#include "platform/linux/preferences/ini_preference_store.h"
#include "platform/linux/text/linux_ui_font.h"
#include "platform/simulated/desktop/fake_login_item.h"
#include "platform/simulated/desktop/fixed_display_settings.h"
#include "platform/simulated/desktop/manual_frame_clock.h"
#include "platform/simulated/desktop/recording_desktop.h"
#include "platform/simulated/desktop/recording_popover_host.h"
#include "platform/simulated/laptop/manual_timer_source.h"
#include "render/status_art.h"

#include <QApplication>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <sched.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace amperly;

/// The program with all of its real parts but the desktop's.
class Program {
public:
    Program(BenchLaptop& laptop, DrawingStatusItem::Panel panel)
        : m_power(m_files, laptop.root())
        , m_preferences(laptop.preferencesFile(), [](const std::string&) {})
        , m_statusItem(panel)
        , m_font("DejaVu Sans")
        , m_art(m_font)
        , m_delegate({
              .power = m_power,
              .preferences = m_preferences,
              .timers = m_timers,
              .statusItem = m_statusItem,
              .popover = m_popover,
              .loginItem = m_loginItem,
              .desktop = m_desktop,
              .frames = m_frames,
              .display = m_display,
          })
    {
        m_delegate.applicationDidFinishLaunching();
        if (!m_delegate.live().sample())
            throw std::runtime_error("the program can't read the made-up laptop");
    }

    [[gnu::noinline]] void measuredTick() { m_delegate.update(); }

    [[nodiscard]] int changes() const { return m_statusItem.changes(); }

private:
    PosixFiles m_files;
    LinuxPowerSource m_power;
    IniPreferenceStore m_preferences;
    ManualTimerSource m_timers;
    DrawingStatusItem m_statusItem;
    RecordingPopoverHost m_popover;
    FakeLoginItem m_loginItem;
    RecordingDesktop m_desktop;
    ManualFrameClock m_frames;
    FixedDisplaySettings m_display;
    LinuxUiFont m_font;
    StatusArt m_art;
    const Injected<PreferenceStore> m_standardPreferences{m_preferences};
    const Injected<StatusArt> m_currentArt{m_art};
    AppDelegate m_delegate;
};

[[gnu::noinline]] void measuredYardstick(BenchLaptop& laptop)
{
    laptop.readSixAttributes();
}

/// Powers that differ from each other by more than the text and the smoothing hide.
long powerOfTurn(int turn)
{
    constexpr long kLowest = 10'000'000;
    constexpr long kSteps = 89;
    constexpr long kStep = 1'000'000;
    constexpr long kStride = 37; // shares no factor with the steps, so all of them come up
    return kLowest + turn * kStride % kSteps * kStep;
}

/// Long enough for every digit to have been drawn once in every place.
constexpr int kWarmingTurns = 500;

void warm(BenchLaptop& laptop, Program& program)
{
    for (int turn = 0; turn < kWarmingTurns; ++turn) {
        laptop.setPower(powerOfTurn(turn));
        program.measuredTick();
        measuredYardstick(laptop);
    }
}

struct Figures {
    double tickNanoseconds = 0; ///< median
    double yardstickNanoseconds = 0; ///< median
    double ratio = 0; ///< median of the ratios of the blocks
    double allocationsPerTick = 0;
    double changesPerTick = 0;
};

Figures measure(DrawingStatusItem::Panel panel, bool changing)
{
    constexpr int kBlocks = 15;
    constexpr int kTurnsOfBlock = 400;

    BenchLaptop laptop;
    Program program(laptop, panel);
    warm(laptop, program);
    for (int turn = 0; turn < kTurnsOfBlock; ++turn) // until smoothing has nothing left to smooth
        program.measuredTick();

    std::vector<double> ticks;
    std::vector<double> yardsticks;
    std::vector<double> ratios;
    ticks.reserve(kBlocks);
    yardsticks.reserve(kBlocks);
    ratios.reserve(kBlocks);
    std::vector<double> blockTicks(kTurnsOfBlock);
    std::vector<double> blockYardsticks(kTurnsOfBlock);
    long allocations = 0;
    const int changesBefore = program.changes();
    for (int block = 0; block < kBlocks; ++block) {
        for (int turn = 0; turn < kTurnsOfBlock; ++turn) {
            const auto index = static_cast<std::size_t>(turn);
            if (changing)
                laptop.setPower(powerOfTurn(turn));
            blockYardsticks[index] = nanosecondsOf([&] { measuredYardstick(laptop); });
            const long heapBefore = heapRequests();
            blockTicks[index] = nanosecondsOf([&] { program.measuredTick(); });
            allocations += heapRequests() - heapBefore;
        }
        ticks.push_back(median(blockTicks));
        yardsticks.push_back(median(blockYardsticks));
        ratios.push_back(ticks.back() / yardsticks.back());
    }
    constexpr double kTurns = kBlocks * kTurnsOfBlock;
    return {
        .tickNanoseconds = median(ticks),
        .yardstickNanoseconds = median(yardsticks),
        .ratio = median(ratios),
        .allocationsPerTick = static_cast<double>(allocations) / kTurns,
        .changesPerTick = (program.changes() - changesBefore) / kTurns,
    };
}

void print(const char* name, const Figures& figures, const char* separator)
{
    std::printf("  \"%s\": {\"tick_ns\": %.1f, \"six_preads_ns\": %.1f, \"ratio\": %.4f, "
                "\"allocations_per_tick\": %.4f, \"changes_per_tick\": %.4f}%s\n",
        name, figures.tickNanoseconds, figures.yardstickNanoseconds, figures.ratio,
        figures.allocationsPerTick, figures.changesPerTick, separator);
}

void measureAll()
{
    using Panel = DrawingStatusItem::Panel;
    std::printf("{\n");
    print("unchanged", measure(Panel::Plain, false), ",");
    print("changed", measure(Panel::Plain, true), ",");
    print("changed_wide", measure(Panel::Wide, true), ",");
    print("changed_tiles", measure(Panel::Tiles, true), "");
    std::printf("}\n");
}

void loop(std::string_view what, int count)
{
    BenchLaptop laptop;
    Program program(laptop, DrawingStatusItem::Panel::Plain);
    warm(laptop, program);
    for (int turn = 0; turn < count; ++turn) {
        if (what == "changed")
            laptop.setPower(powerOfTurn(turn));
        if (what == "yardstick")
            measuredYardstick(laptop);
        else
            program.measuredTick();
    }
}

void stayOnOneCore()
{
    const int core = ::sched_getcpu();
    cpu_set_t cores;
    CPU_ZERO(&cores);
    CPU_SET(static_cast<std::size_t>(std::max(core, 0)), &cores);
    ::sched_setaffinity(0, sizeof cores, &cores);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 1 && argc != 3) {
        std::fprintf(stderr, "usage: tick_bench [unchanged|changed|yardstick COUNT]\n");
        return EXIT_FAILURE;
    }
    stayOnOneCore();
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const QApplication toolkit(argc, argv);
    try {
        if (argc == 3)
            loop(argv[1], std::atoi(argv[2]));
        else
            measureAll();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tick_bench: %s\n", error.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
