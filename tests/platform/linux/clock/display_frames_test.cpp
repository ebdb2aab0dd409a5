#include "platform/linux/clock/display_frames.h"

#include "tests/support/run_until.h"

#include <QElapsedTimer>
#include <QWidget>
#include <gtest/gtest.h>
#include <vector>

namespace amperly {
namespace {

struct ScreenState {
    bool isOff = false;
    int checks = 0;
};

class FakeVisibility : public WindowVisibility {
public:
    explicit FakeVisibility(ScreenState& screen) : m_screen(screen) { }

    [[nodiscard]] bool isCovered() const override { return false; }
    [[nodiscard]] bool isScreenOff() const override
    {
        ++m_screen.checks;
        return m_screen.isOff;
    }

private:
    ScreenState& m_screen;
};

class DisplayFramesTest : public testing::Test {
protected:
    void begin(QWidget& shown)
    {
        run = frames.start(shown, [this](double now) { times.push_back(now); });
    }

    static constexpr double kCheckSeconds = 0.01;

    bool savesPower = false;
    ScreenState screen;
    DisplayFrames frames{[this] { return savesPower; },
        [this](QWindow&, const std::function<void()>&) { return std::make_unique<FakeVisibility>(screen); },
        kCheckSeconds};
    QWidget window;
    std::vector<double> times;
    std::unique_ptr<FrameClock::Run> run;
};

TEST_F(DisplayFramesTest, FramesComeOneAfterTheOtherWhileTheWindowIsSeen)
{
    window.show();
    begin(window);
    ASSERT_TRUE(runUntil([this] { return times.size() >= 5; }));
    for (std::size_t frame = 1; frame < times.size(); ++frame)
        EXPECT_GT(times[frame], times[frame - 1] + 0.004) << "faster than any display";
}

TEST_F(DisplayFramesTest, AWidgetInsideOfAWindowHasTheWindowsFrames)
{
    QWidget inside(&window);
    window.show();
    begin(inside);
    EXPECT_TRUE(runUntil([this] { return times.size() >= 2; }));
}

TEST_F(DisplayFramesTest, HiddenTheWindowHasNoFramesAndShownAgainItHas)
{
    window.show();
    begin(window);
    ASSERT_TRUE(runUntil([this] { return times.size() >= 2; }));
    window.hide();
    QCoreApplication::processEvents();
    const std::size_t before = times.size();
    QElapsedTimer timer;
    timer.start();
    ASSERT_TRUE(runUntil([&] { return timer.elapsed() > 60; }));
    EXPECT_EQ(times.size(), before);
    window.show();
    EXPECT_TRUE(runUntil([&] { return times.size() > before; }));
}

TEST_F(DisplayFramesTest, ARunMayEndWithinItsOwnFrame)
{
    window.show();
    int count = 0;
    run = frames.start(window, [&](double) {
        ++count;
        run.reset();
    });
    ASSERT_TRUE(runUntil([&] { return count == 1; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(count, 1);
}

TEST_F(DisplayFramesTest, AWindowThatWasNeverShownHasNoFrames)
{
    begin(window);
    ASSERT_NE(run, nullptr);
    QCoreApplication::processEvents();
    EXPECT_TRUE(times.empty());
}

TEST_F(DisplayFramesTest, ToSpareTheBatteryFramesAreFewer)
{
    savesPower = true;
    window.show();
    begin(window);
    ASSERT_TRUE(runUntil([this] { return times.size() >= 4; }));
    const double mean = (times.back() - times.front()) / static_cast<double>(times.size() - 1);
    EXPECT_GT(mean, 0.9 / DisplayFrames::kGentleRate);
}

TEST_F(DisplayFramesTest, WhileTheScreenIsOffThereAreNoFramesUntilItIsOnAgain)
{
    window.show();
    begin(window);
    ASSERT_TRUE(runUntil([this] { return times.size() >= 2; }));
    screen.isOff = true;
    const int before = screen.checks;
    ASSERT_TRUE(runUntil([&] { return screen.checks >= before + 2; })) << "it is not asked for any more";
    const std::size_t last = times.size();
    ASSERT_TRUE(runUntil([&] { return screen.checks >= before + 5; }));
    EXPECT_EQ(times.size(), last);
    screen.isOff = false;
    EXPECT_TRUE(runUntil([&] { return times.size() >= last + 2; }));
}

TEST_F(DisplayFramesTest, ASwitchToSparingTheBatteryIsHeededInTheMiddleOfARun)
{
    window.show();
    begin(window);
    ASSERT_TRUE(runUntil([this] { return times.size() >= 3; }));
    savesPower = true;
    const int before = screen.checks;
    ASSERT_TRUE(runUntil([&] { return screen.checks > before; }));
    const std::size_t first = times.size() + 1; // one that was already under way may come yet
    ASSERT_TRUE(runUntil([&] { return times.size() >= first + 4; }));
    const double mean = (times.back() - times[first]) / static_cast<double>(times.size() - 1 - first);
    EXPECT_GT(mean, 0.9 / DisplayFrames::kGentleRate);
}

} // namespace
} // namespace amperly
