#include "tests/app/application_test.h"
#include "tests/app/store_without_defaults.h"

#include <limits>

namespace amperly {
namespace {

class SamplingLoopTest : public ApplicationTest {
protected:
    [[nodiscard]] double interval() const { return app->timer()->intervalSeconds(); }
    [[nodiscard]] double tolerance() const { return app->timer()->toleranceSeconds(); }
    [[nodiscard]] double load() const { return app->live().sample()->systemLoad; }
};

TEST_F(SamplingLoopTest, TheFirstReadingIsShownAtLaunchAndNotOneIntervalLater)
{
    launchWith({.systemLoad = 10});
    EXPECT_EQ(readings.readings(), 1);
    EXPECT_EQ(load(), 10);
    ASSERT_TRUE(platform.statusItem.shown().has_value());
}

TEST_F(SamplingLoopTest, TicksComeEveryTwoSecondsByDefault)
{
    launch();
    platform.advance(1.9);
    EXPECT_EQ(readings.readings(), 1);
    platform.advance(0.2);
    EXPECT_EQ(readings.readings(), 2);
    platform.advance(20);
    EXPECT_EQ(readings.readings(), 12);
}

TEST_F(SamplingLoopTest, AnIntervalOfZeroRunsAtTheFloorOfHalfASecond)
{
    preferences.set(Pref::interval, 0.0);
    launch();
    EXPECT_EQ(interval(), 0.5);
    EXPECT_EQ(tolerance(), 0.125);
}

TEST_F(SamplingLoopTest, AnIntervalThatIsNoNumberRunsAtTheFloor)
{
    preferences.set(Pref::interval, std::string("soon"));
    launch();
    EXPECT_EQ(interval(), 0.5);
    preferences.set(Pref::interval, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(interval(), 0.5);
    preferences.set(Pref::interval, -3.0);
    EXPECT_EQ(interval(), 0.5);
}

TEST_F(SamplingLoopTest, AnIntervalThatIsNowhereToBeFoundRunsAtTheFloor)
{
    StoreWithoutDefaults nothing;
    SimulatedPlatform desktop(nothing);
    app = std::make_unique<AppDelegate>(desktop.platform());
    app->applicationDidFinishLaunching();
    EXPECT_EQ(interval(), 0.5);
    EXPECT_EQ(tolerance(), 0.125);
    app.reset();
}

TEST_F(SamplingLoopTest, ALongIntervalHasNoUpperBound)
{
    preferences.set(Pref::interval, 3600.0);
    launch();
    EXPECT_EQ(interval(), 3600);
    EXPECT_EQ(tolerance(), 900);
}

TEST_F(SamplingLoopTest, TheOpenPanelShortensALongIntervalToOneSecondAndClosingRestoresIt)
{
    preferences.set(Pref::interval, 5.0);
    launch();
    EXPECT_EQ(interval(), 5);
    EXPECT_EQ(tolerance(), 1.25);
    click(ClickButton::Left);
    EXPECT_EQ(interval(), 1);
    EXPECT_EQ(tolerance(), 0.25);
    platform.popover.dismiss();
    EXPECT_EQ(interval(), 5);
    EXPECT_EQ(tolerance(), 1.25);
}

TEST_F(SamplingLoopTest, TheOpenPanelNeverLengthensAShortInterval)
{
    preferences.set(Pref::interval, 0.8);
    launch();
    click(ClickButton::Left);
    EXPECT_EQ(interval(), 0.8);
    EXPECT_EQ(tolerance(), 0.2);
}

TEST_F(SamplingLoopTest, SmoothingAveragesHalfAndHalfWithWhatWasPublishedLast)
{
    launchWith({.systemLoad = 10, .adapterIn = 40, .battery = 30, .externalConnected = true});
    const PowerSample next{.systemLoad = 20, .adapterIn = 60, .battery = -10, .externalConnected = true};
    tickWith(next);
    EXPECT_EQ(app->live().sample(),
        (PowerSample{.systemLoad = 15, .adapterIn = 50, .battery = 10, .externalConnected = true}));
    tickWith(next);
    EXPECT_EQ(app->live().sample(),
        (PowerSample{.systemLoad = 17.5, .adapterIn = 55, .battery = 0, .externalConnected = true}));
}

TEST_F(SamplingLoopTest, RatingPercentAndConnectionAlwaysShowTheNewestReading)
{
    launchWith({.systemLoad = 10, .adapterRating = 96, .batteryPercent = 50, .externalConnected = true});
    tickWith(PowerSample{.systemLoad = 10, .batteryPercent = 49});
    EXPECT_EQ(app->live().sample(), (PowerSample{.systemLoad = 10, .batteryPercent = 49}));
}

TEST_F(SamplingLoopTest, WithoutSmoothingEveryReadingIsPublishedAsItIs)
{
    preferences.set(Pref::smoothing, false);
    launchWith({.systemLoad = 10});
    tickWith(PowerSample{.systemLoad = 20});
    EXPECT_EQ(load(), 20);
}

TEST_F(SamplingLoopTest, AFailedReadingClearsTheModelAndTheNextOneIsStoredUnchanged)
{
    launchWith({.systemLoad = 10});
    tickWith(std::nullopt);
    EXPECT_EQ(app->live().sample(), std::nullopt);
    tickWith(PowerSample{.systemLoad = 20});
    EXPECT_EQ(load(), 20);
}

TEST_F(SamplingLoopTest, AFigureThatIsUnknownStaysOutOfTheAverage)
{
    launchWith({.systemLoad = 10, .battery = -10});
    tickWith(PowerSample{.battery = -20, .systemLoadKnown = false});
    EXPECT_FALSE(app->live().sample()->systemLoadKnown);
    EXPECT_EQ(app->live().sample()->battery, -15);
    tickWith(PowerSample{.systemLoad = 20, .battery = -15});
    EXPECT_TRUE(app->live().sample()->systemLoadKnown);
    EXPECT_EQ(load(), 20);
}

TEST_F(SamplingLoopTest, ADisplayPreferenceRedrawsAtOnceAndKeepsTheTimersPhase)
{
    launch();
    const RepeatingTimer* const before = app->timer();
    const int shownBefore = platform.statusItem.showings();
    preferences.set(Pref::decimals, std::int64_t{0});
    EXPECT_EQ(app->timer(), before);
    EXPECT_EQ(platform.timers.startedTimers(), 1);
    EXPECT_EQ(platform.statusItem.showings(), shownBefore + 1);
    EXPECT_EQ(readings.readings(), 1) << "a changed preference takes no reading";
}

TEST_F(SamplingLoopTest, AnotherIntervalReplacesTheTimerAndRedraws)
{
    launch();
    const int shownBefore = platform.statusItem.showings();
    preferences.set(Pref::interval, 3.0);
    EXPECT_EQ(platform.timers.startedTimers(), 2);
    EXPECT_EQ(platform.timers.runningTimers(), 1);
    EXPECT_EQ(interval(), 3);
    EXPECT_EQ(tolerance(), 0.75);
    EXPECT_EQ(platform.statusItem.showings(), shownBefore + 1);
}

TEST_F(SamplingLoopTest, AnotherIntervalBehindAnOpenPanelKeepsTheTimer)
{
    launch();
    click(ClickButton::Left);
    const int startedBefore = platform.timers.startedTimers();
    const int shownBefore = platform.statusItem.showings();
    preferences.set(Pref::interval, 3.0);
    EXPECT_EQ(platform.timers.startedTimers(), startedBefore);
    EXPECT_EQ(interval(), 1);
    EXPECT_EQ(platform.statusItem.showings(), shownBefore + 1);
}

TEST_F(SamplingLoopTest, NoTickComesOnceTheApplicationIsGone)
{
    launch();
    app.reset();
    platform.advance(10);
    EXPECT_EQ(readings.readings(), 1);
    preferences.set(Pref::decimals, std::int64_t{0});
    click(ClickButton::Left);
    EXPECT_EQ(readings.readings(), 1);
}

} // namespace
} // namespace amperly
