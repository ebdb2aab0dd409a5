#include "platform/simulated/laptop/simulated_day.h"

#include "telemetry/power_reader.h"
#include "tests/support/print_sample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace amperly {
namespace {

// Below this a battery counts as idle wherever it is shown.
constexpr double kIdleWatts = 0.3;

class SimulatedDayTest : public testing::Test {
protected:
    /// What a program sees that reads every two seconds of the first day.
    std::vector<PowerSample> watch()
    {
        PowerReader reader(laptop.smc(), laptop.registry());
        std::vector<PowerSample> seen;
        for (double second = 0; second < SimulatedDay::kLengthSeconds; second += 2.0) {
            day.advanceTo(second);
            const std::optional<PowerSample> sample = reader.read();
            EXPECT_TRUE(sample.has_value()) << second;
            if (sample)
                seen.push_back(*sample);
        }
        return seen;
    }

    template <typename Predicate>
    static int count(const std::vector<PowerSample>& samples, Predicate predicate)
    {
        return static_cast<int>(std::count_if(samples.begin(), samples.end(), predicate));
    }

    SimulatedLaptop laptop;
    SimulatedDay day{laptop};
};

TEST_F(SimulatedDayTest, EveryStateIsSeenForAFewReadings)
{
    const std::vector<PowerSample> seen = watch();
    const auto plugged = [](const PowerSample& sample) { return sample.externalConnected; };

    EXPECT_GE(count(seen, [&](const auto& s) { return plugged(s) && s.battery > 20; }), 5) << "charging";
    EXPECT_GE(
        count(seen, [&](const auto& s) { return plugged(s) && s.battery > kIdleWatts && s.battery < 15; }), 2)
        << "taking the last percents slowly";
    EXPECT_GE(count(seen,
                  [&](const auto& s) {
                      return plugged(s) && s.batteryPercent == 100 && std::abs(s.battery) < kIdleWatts;
                  }),
        3)
        << "full and idle";
    EXPECT_GE(count(seen, [&](const auto& s) { return !plugged(s) && s.battery < -5; }), 10) << "on battery";
    EXPECT_GE(count(seen, [&](const auto& s) { return s.adapterRating == 67 && s.battery < -10; }), 3)
        << "boosting beyond its charger";
    EXPECT_GE(count(seen, [&](const auto& s) { return s.adapterRating == 20 && s.battery < -1; }), 3)
        << "too weak a charger";
    EXPECT_GE(count(seen, [&](const auto& s) { return !plugged(s) && s.batteryPercent <= 20; }), 3) << "low";
    EXPECT_GE(count(seen, [&](const auto& s) { return !plugged(s) && s.batteryPercent <= 5; }), 2)
        << "almost empty";
    EXPECT_GE(count(seen, [&](const auto& s) { return s.adapterRating == 140 && s.systemLoad > 45; }), 3)
        << "hard work on a large charger";
}

TEST_F(SimulatedDayTest, EveryChargerIsSeenForAFewReadings)
{
    const std::vector<PowerSample> seen = watch();
    for (const int rating : {20, 30, 67, 96, 140})
        EXPECT_GE(count(seen, [rating](const auto& s) { return s.adapterRating == rating; }), 3) << rating;
}

TEST_F(SimulatedDayTest, ChargesAcrossTheWholeBatteryAreSeen)
{
    std::set<int> tens;
    for (const PowerSample& sample : watch())
        tens.insert(*sample.batteryPercent / 10);
    EXPECT_THAT(tens, testing::ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10));
}

TEST_F(SimulatedDayTest, TheMachineNeverGoesOff)
{
    for (double second = 0; second < 3 * SimulatedDay::kLengthSeconds; second += 0.5) {
        day.advanceTo(second);
        ASSERT_GT(laptop.flows().systemLoad, 4.0) << second;
        ASSERT_GT(laptop.percent(), 0.0) << second;
        ASSERT_EQ(laptop.flows().adapterIn, laptop.flows().systemLoad + laptop.flows().battery) << second;
    }
}

TEST_F(SimulatedDayTest, OneDayFollowsTheOtherWithoutAJump)
{
    day.advanceTo(SimulatedDay::kLengthSeconds - 0.1);
    const double evening = laptop.percent();
    day.advanceTo(SimulatedDay::kLengthSeconds + 0.1);
    EXPECT_NEAR(laptop.percent(), evening, 1.0);
    EXPECT_FALSE(laptop.isPluggedIn()) << "the morning is spent on battery";
    EXPECT_NEAR(evening, 62.0, 5.0) << "and begins about where the first one did";
}

TEST_F(SimulatedDayTest, TheStateFollowsFromTheTimeAloneInWhateverStepsItComes)
{
    SimulatedLaptop other;
    SimulatedDay inOneStep(other);
    for (double second = 0; second < 73.0; second += 0.37)
        day.advanceTo(second);
    day.advanceTo(73.0);
    inOneStep.advanceTo(73.0);
    EXPECT_EQ(laptop.flows(), other.flows());
    EXPECT_EQ(laptop.percent(), other.percent());
}

TEST_F(SimulatedDayTest, GoingBackBeginsTheDayAnew)
{
    day.advanceTo(15.0);
    const PowerFlows before = laptop.flows();
    const double percent = laptop.percent();
    day.advanceTo(99.0);
    day.advanceTo(15.0);
    EXPECT_EQ(laptop.flows(), before);
    EXPECT_EQ(laptop.percent(), percent);
    day.advanceTo(-4.0);
    EXPECT_EQ(laptop.percent(), 62.0);
}

} // namespace
} // namespace amperly
