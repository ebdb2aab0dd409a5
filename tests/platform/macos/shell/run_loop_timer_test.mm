#include "platform/macos/shell/run_loop_timer.h"

#include "tests/platform/macos/fakes/fake_desktop_test.h"

namespace amperly {
namespace {

class RunLoopTimerTest : public FakeDesktopTest {
protected:
    RunLoopTimerSource timers;
    int ticks = 0;
};

TEST_F(RunLoopTimerTest, TheFirstTickComesOneIntervalAfterTheStart)
{
    const auto timer = timers.start(2.0, 0.5, [this] { ++ticks; });
    fake_mac::advance(1.9);
    EXPECT_EQ(ticks, 0);
    fake_mac::advance(0.1);
    EXPECT_EQ(ticks, 1);
    fake_mac::advance(4.0);
    EXPECT_EQ(ticks, 3);
}

TEST_F(RunLoopTimerTest, TheSystemIsToldTheTolerance)
{
    const auto timer = timers.start(5.0, 1.25, [] {});
    EXPECT_EQ(stage.timerTolerance, 1.25);
    EXPECT_EQ(timer->toleranceSeconds(), 1.25);
    EXPECT_EQ(timer->intervalSeconds(), 5.0);
}

TEST_F(RunLoopTimerTest, WhatATickHandsOutGoesWithTheTick)
{
    int pools = 0;
    const auto timer = timers.start(2.0, 0.5, [&] { pools = stage.autoreleasePools; });
    fake_mac::advance(2.0);
    EXPECT_EQ(pools, 1);
    EXPECT_EQ(stage.autoreleasePools, 0);
}

TEST_F(RunLoopTimerTest, ATimersEndStopsIt)
{
    auto timer = timers.start(1.0, 0.25, [this] { ++ticks; });
    EXPECT_EQ(stage.timers, 1);
    timer.reset();
    EXPECT_EQ(stage.timers, 0);
    fake_mac::advance(5.0);
    EXPECT_EQ(ticks, 0);
}

TEST_F(RunLoopTimerTest, AnActionMayEndItsOwnTimer)
{
    std::unique_ptr<RepeatingTimer> timer;
    timer = timers.start(1.0, 0.25, [&, witness = std::string(100, 'w')] {
        timer.reset();
        EXPECT_EQ(witness.size(), 100U);
        ++ticks;
    });
    fake_mac::advance(5.0);
    EXPECT_EQ(ticks, 1);
}

} // namespace
} // namespace amperly
