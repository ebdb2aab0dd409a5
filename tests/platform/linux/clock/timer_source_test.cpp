#include "platform/linux/clock/timer_source.h"

#include "tests/support/run_until.h"

#include <QMenu>
#include <QWidget>

#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <sys/prctl.h>

namespace amperly {
namespace {

constexpr double kNever = 3600.0; // seconds; longer than any test

long slackNanoseconds()
{
    return prctl(PR_GET_TIMERSLACK);
}

class TimerSourceTest : public testing::Test {
protected:
    const long m_default = slackNanoseconds();
    TimerSlack slack;
    QtTimerSource source{slack};

    std::unique_ptr<RepeatingTimer> timer(double tolerance)
    {
        return source.start(kNever, tolerance, [] {});
    }
};

TEST_F(TimerSourceTest, WithNothingOnScreenTheThreadMayWakeAToleranceLate)
{
    const auto running = timer(0.5);
    EXPECT_EQ(slackNanoseconds(), 500'000'000);
}

TEST_F(TimerSourceTest, TheStrictestOfSeveralTimersCounts)
{
    const auto lenient = timer(1.25);
    auto strict = timer(0.25);
    EXPECT_EQ(slackNanoseconds(), 250'000'000);
    strict.reset();
    EXPECT_EQ(slackNanoseconds(), 1'250'000'000);
}

TEST_F(TimerSourceTest, WithoutATimerTheKernelsDefaultIsInForce)
{
    timer(0.5).reset();
    EXPECT_EQ(slackNanoseconds(), m_default);
}

TEST_F(TimerSourceTest, AVisibleWindowAllowsNoLateness)
{
    const auto running = timer(0.5);
    QWidget window;
    window.show();
    EXPECT_EQ(slackNanoseconds(), m_default);
    window.hide();
    EXPECT_EQ(slackNanoseconds(), 500'000'000);
}

TEST_F(TimerSourceTest, OneOfTwoWindowsIsEnough)
{
    const auto running = timer(0.5);
    QWidget window;
    window.show();
    QMenu menu;
    menu.addAction(QStringLiteral("Quit"));
    menu.popup(QPoint(0, 0));
    menu.hide();
    EXPECT_EQ(slackNanoseconds(), m_default);
}

TEST_F(TimerSourceTest, AWindowThatIsDestroyedWhileShownCountsNoMore)
{
    const auto running = timer(0.5);
    auto window = std::make_unique<QWidget>();
    window->show();
    window.reset();
    EXPECT_EQ(slackNanoseconds(), 500'000'000);
}

TEST_F(TimerSourceTest, AHoldAllowsNoLatenessUntilItsEnd)
{
    const auto running = timer(0.5);
    std::optional<TimerSlack::ExactHold> first(slack);
    std::optional<TimerSlack::ExactHold> second(slack);
    first.reset();
    EXPECT_EQ(slackNanoseconds(), m_default);
    second.reset();
    EXPECT_EQ(slackNanoseconds(), 500'000'000);
}

TEST_F(TimerSourceTest, ATimerThatStartsUnderAWindowWaitsForItsEndToBeLenient)
{
    QWidget window;
    window.show();
    const auto running = timer(0.5);
    EXPECT_EQ(slackNanoseconds(), m_default);
    window.hide();
    EXPECT_EQ(slackNanoseconds(), 500'000'000);
}

TEST(TimerSlackTest, ItsEndLeavesTheThreadAsItWas)
{
    const long before = slackNanoseconds();
    {
        TimerSlack slack;
        slack.addTolerance(0.5);
    }
    EXPECT_EQ(slackNanoseconds(), before);
}

TEST_F(TimerSourceTest, StatesWhatItWasAskedFor)
{
    const auto running = source.start(2.0, 0.5, [] {});
    EXPECT_EQ(running->intervalSeconds(), 2.0);
    EXPECT_EQ(running->toleranceSeconds(), 0.5);
}

TEST_F(TimerSourceTest, AnIntervalBeyondWhatTheToolkitCountsIsStatedAsItIsAndNotCutShort)
{
    constexpr double kForty = 40.0 * 24 * 3600; // days; in milliseconds more than an int holds
    int ticks = 0;
    const auto longest = source.start(kForty, 0.0, [&ticks] { ++ticks; });
    EXPECT_EQ(longest->intervalSeconds(), kForty);
    int otherTicks = 0;
    const auto other = source.start(0.001, 0.0, [&otherTicks] { ++otherTicks; });
    ASSERT_TRUE(runUntil([&] { return otherTicks >= 3; }));
    EXPECT_EQ(ticks, 0);
}

TEST_F(TimerSourceTest, AnIntervalWithoutAnEndNeverTicks)
{
    int ticks = 0;
    const auto endless = source.start(std::numeric_limits<double>::infinity(), 0.0, [&ticks] { ++ticks; });
    int otherTicks = 0;
    const auto other = source.start(0.001, 0.0, [&otherTicks] { ++otherTicks; });
    ASSERT_TRUE(runUntil([&] { return otherTicks >= 3; }));
    EXPECT_EQ(ticks, 0);
}

TEST_F(TimerSourceTest, TicksAgainAndAgain)
{
    int ticks = 0;
    const auto running = source.start(0.001, 0.0, [&ticks] { ++ticks; });
    EXPECT_TRUE(runUntil([&] { return ticks >= 3; }));
    EXPECT_EQ(ticks, 3);
}

TEST_F(TimerSourceTest, AnActionMayReplaceItsOwnTimer)
{
    int first = 0;
    int second = 0;
    std::unique_ptr<RepeatingTimer> running;
    running = source.start(0.001, 0.0, [&] {
        ++first;
        running = source.start(0.001, 0.0, [&second] { ++second; });
        ++first; // what the action holds is still there
    });
    EXPECT_TRUE(runUntil([&] { return second >= 2; }));
    EXPECT_EQ(first, 2);
}

} // namespace
} // namespace amperly
