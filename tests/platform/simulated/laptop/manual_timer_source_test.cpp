#include "platform/simulated/laptop/manual_timer_source.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace amperly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ManualTimerSourceTest : public testing::Test {
protected:
    std::unique_ptr<RepeatingTimer> startNoting(double intervalSeconds, std::vector<double>& instants)
    {
        return timers.start(intervalSeconds, intervalSeconds / 4,
            [this, &instants] { instants.push_back(timers.elapsedSeconds()); });
    }

    ManualTimerSource timers;
    std::vector<double> ticks;
};

TEST_F(ManualTimerSourceTest, FirstTickComesOneIntervalAfterTheStart)
{
    const auto timer = startNoting(2.0, ticks);
    timers.advance(1.999);
    EXPECT_THAT(ticks, IsEmpty());
    timers.advance(0.001);
    EXPECT_THAT(ticks, ElementsAre(2.0));
}

TEST_F(ManualTimerSourceTest, EveryTickOnTheWayFiresAtItsOwnInstant)
{
    const auto timer = startNoting(0.5, ticks);
    timers.advance(1.75);
    EXPECT_THAT(ticks, ElementsAre(0.5, 1.0, 1.5));
    EXPECT_EQ(timers.elapsedSeconds(), 1.75);
}

TEST_F(ManualTimerSourceTest, LateTicksDoNotDrift)
{
    const auto timer = startNoting(0.1, ticks);
    for (int second = 0; second < 1000; ++second)
        timers.advance(1.0);
    EXPECT_GE(ticks.size(), 9999u);
    EXPECT_LE(ticks.size(), 10000u);
    EXPECT_NEAR(ticks[9000], 900.1, 1e-9);
}

TEST_F(ManualTimerSourceTest, TheTimerTellsWhatItWasStartedWith)
{
    const auto timer = timers.start(5.0, 1.25, [] {});
    EXPECT_EQ(timer->intervalSeconds(), 5.0);
    EXPECT_EQ(timer->toleranceSeconds(), 1.25);
}

TEST_F(ManualTimerSourceTest, AnEndedTimerFiresNoMore)
{
    auto timer = startNoting(1.0, ticks);
    timers.advance(1.0);
    timer.reset();
    timers.advance(5.0);
    EXPECT_THAT(ticks, ElementsAre(1.0));
    EXPECT_EQ(timers.runningTimers(), 0);
    EXPECT_EQ(timers.startedTimers(), 1);
}

TEST_F(ManualTimerSourceTest, TimersFireInTheOrderOfTheirInstants)
{
    std::vector<std::string> order;
    const auto slow = timers.start(1.5, 0, [&] { order.emplace_back("slow"); });
    const auto quick = timers.start(1.0, 0, [&] { order.emplace_back("quick"); });
    timers.advance(2.0);
    EXPECT_THAT(order, ElementsAre("quick", "slow", "quick"));
}

TEST_F(ManualTimerSourceTest, AnActionMayReplaceItsOwnTimer)
{
    std::unique_ptr<RepeatingTimer> timer;
    std::vector<double> after;
    timer = timers.start(1.0, 0, [&] {
        ticks.push_back(timers.elapsedSeconds());
        timer = startNoting(3.0, after);
    });
    timers.advance(8.0);
    EXPECT_THAT(ticks, ElementsAre(1.0));
    EXPECT_THAT(after, ElementsAre(4.0, 7.0));
    EXPECT_EQ(timers.runningTimers(), 1);
}

TEST_F(ManualTimerSourceTest, AnActionMayEndAnotherTimerThatIsDueAtTheSameInstant)
{
    auto victim = std::unique_ptr<RepeatingTimer>();
    const auto first = timers.start(1.0, 0, [&] { victim.reset(); });
    victim = startNoting(1.0, ticks);
    timers.advance(3.0);
    EXPECT_THAT(ticks, IsEmpty());
}

TEST_F(ManualTimerSourceTest, ATimerMayOutliveItsSource)
{
    auto source = std::make_unique<ManualTimerSource>();
    const auto timer = source->start(2.0, 0.5, [] {});
    source.reset();
    EXPECT_EQ(timer->intervalSeconds(), 2.0);
}

TEST_F(ManualTimerSourceTest, WhoLivesByTheClockMovesBeforeTheTicks)
{
    double passed = 0;
    std::vector<double> passedAtTicks;
    timers.onTimePasses([&](double seconds) { passed += seconds; });
    const auto timer = timers.start(2.0, 0, [&] { passedAtTicks.push_back(passed); });
    timers.advance(5.0);
    EXPECT_THAT(passedAtTicks, ElementsAre(2.0, 4.0));
    EXPECT_EQ(passed, 5.0);
}

} // namespace
} // namespace amperly
