#include "platform/linux/clock/display_frames.h"
#include "platform/linux/clock/window_visibility.h"

#include "tests/support/private_display.h"
#include "tests/support/run_until.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QScreen>
#include <QWidget>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace amperly {
namespace {

/// On an X server of its own, without a window manager.
class WindowVisibilityTest : public PrivateDisplayTest {
protected:
    void SetUp() override
    {
        PrivateDisplayTest::SetUp();
        if (IsSkipped())
            return;
        window = std::make_unique<QWidget>(nullptr, Qt::BypassWindowManagerHint);
        window->setGeometry(50, 50, 100, 100);
        window->show();
    }
    void TearDown() override { window.reset(); }

    /// Another window over the first one, so many pixels wide.
    static std::unique_ptr<QWidget> cover(int width)
    {
        auto other = std::make_unique<QWidget>(nullptr, Qt::BypassWindowManagerHint);
        other->setGeometry(40, 40, width, 200);
        other->show();
        other->raise();
        return other;
    }

    static bool pause(int milliseconds)
    {
        QElapsedTimer timer;
        timer.start();
        return runUntil([&] { return timer.elapsed() > milliseconds; });
    }

    std::unique_ptr<QWidget> window;
};

TEST_F(WindowVisibilityTest, AWindowIsCoveredOnceAnotherLiesOverAllOfIt)
{
    int changes = 0;
    const std::unique_ptr<WindowVisibility> visibility
        = x11WindowVisibility(static_cast<std::uint32_t>(window->winId()), [&] { ++changes; });
    ASSERT_NE(visibility, nullptr);
    EXPECT_FALSE(visibility->isCovered());
    std::unique_ptr<QWidget> other = cover(200);
    EXPECT_TRUE(runUntil([&] { return visibility->isCovered(); }));
    other.reset();
    EXPECT_TRUE(runUntil([&] { return !visibility->isCovered(); }));
    EXPECT_EQ(changes, 2);
}

TEST_F(WindowVisibilityTest, AWindowOfWhichAnEdgeShowsIsNotCovered)
{
    const std::unique_ptr<WindowVisibility> visibility
        = x11WindowVisibility(static_cast<std::uint32_t>(window->winId()), [] {});
    const std::unique_ptr<QWidget> other = cover(100);
    ASSERT_TRUE(pause(100));
    EXPECT_FALSE(visibility->isCovered());
}

TEST_F(WindowVisibilityTest, AScreenThatCannotBeSwitchedOffIsOn)
{
    const std::unique_ptr<WindowVisibility> visibility
        = x11WindowVisibility(static_cast<std::uint32_t>(window->winId()), [] {});
    EXPECT_FALSE(visibility->isScreenOff());
}

TEST_F(WindowVisibilityTest, ACoveredWindowHasNoFramesUntilItIsSeenAgain)
{
    DisplayFrames frames([] { return false; });
    int count = 0;
    const std::unique_ptr<FrameClock::Run> run = frames.start(*window, [&](double) { ++count; });
    ASSERT_TRUE(runUntil([&] { return count >= 3; }));

    std::unique_ptr<QWidget> other = cover(200);
    ASSERT_TRUE(pause(150)); // until the server has said so
    const int before = count;
    ASSERT_TRUE(pause(150));
    EXPECT_EQ(count, before);

    other.reset();
    EXPECT_TRUE(runUntil([&] { return count > before; }));
}

TEST_F(WindowVisibilityTest, FramesKeepToTheScreensRate)
{
    DisplayFrames frames([] { return false; });
    std::vector<double> times;
    const std::unique_ptr<FrameClock::Run> run
        = frames.start(*window, [&](double now) { times.push_back(now); });
    ASSERT_TRUE(runUntil([&] { return times.size() >= 20; }));
    const double mean = (times.back() - times.front()) / static_cast<double>(times.size() - 1);
    EXPECT_GT(mean, 0.9 / window->screen()->refreshRate());
}

} // namespace
} // namespace amperly
