#include "platform/macos/shell/run_loop_timer.h"

#include "tests/platform/macos/on_a_mac/run_loop.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(RunLoopTimerOnAMacTest, TicksComeAgainAndAgain)
{
    int ticks = 0;
    const auto timer = RunLoopTimerSource().start(0.01, 0.0025, [&] { ++ticks; });
    EXPECT_TRUE(runUntil([&] { return ticks >= 3; }));
}

TEST(RunLoopTimerOnAMacTest, AnActionMayEndItsOwnTimer)
{
    int ticks = 0;
    std::unique_ptr<RepeatingTimer> timer;
    timer = RunLoopTimerSource().start(0.01, 0.0025, [&, witness = std::string(100, 'w')] {
        timer.reset();
        EXPECT_EQ(witness.size(), 100U);
        ++ticks;
    });
    int others = 0;
    const auto other = RunLoopTimerSource().start(0.01, 0.0025, [&] { ++others; });
    EXPECT_TRUE(runUntil([&] { return others >= 5; }));
    EXPECT_EQ(ticks, 1);
}

} // namespace
} // namespace amperly
