#include "platform/simulated/laptop/simulated_laptop.h"

#include <gtest/gtest.h>

#include <cmath>

namespace amperly {
namespace {

constexpr double kHour = 3600.0;

class SimulatedLaptopTest : public testing::Test {
protected:
    void expectBalance() const
    {
        const PowerFlows flows = laptop.flows();
        EXPECT_EQ(flows.adapterIn, flows.systemLoad + flows.battery);
        EXPECT_GE(flows.systemLoad, 0.0);
        EXPECT_GE(flows.adapterIn, 0.0);
    }

    SimulatedLaptop laptop;
};

TEST_F(SimulatedLaptopTest, OnBatteryTheBatteryCarriesTheLoad)
{
    laptop.setLoad(14.0);
    EXPECT_EQ(laptop.flows(), (PowerFlows{14.0, 0.0, -14.0}));
}

TEST_F(SimulatedLaptopTest, OnPowerTheBatteryTakesWhatTheLoadLeaves)
{
    laptop.setLoad(12.0);
    laptop.plugIn(AdapterWatts{67});
    EXPECT_EQ(laptop.flows(), (PowerFlows{12.0, 67.0, 55.0}));
}

TEST_F(SimulatedLaptopTest, ALargeChargerGivesNoMoreThanTheBatteryAccepts)
{
    laptop.setLoad(12.0);
    laptop.plugIn(AdapterWatts{140});
    EXPECT_EQ(laptop.flows(), (PowerFlows{12.0, 77.0, SimulatedBattery::kMostChargingWatts}));
}

TEST_F(SimulatedLaptopTest, TheBatteryHelpsAChargerThatIsTooWeak)
{
    laptop.setLoad(28.0);
    laptop.plugIn(AdapterWatts{20});
    EXPECT_EQ(laptop.flows(), (PowerFlows{28.0, 20.0, -8.0}));
}

TEST_F(SimulatedLaptopTest, TheBatteryHelpsThroughABoost)
{
    laptop.setLoad(110.0);
    laptop.plugIn(AdapterWatts{96});
    EXPECT_EQ(laptop.flows(), (PowerFlows{110.0, 96.0, -14.0}));
}

TEST_F(SimulatedLaptopTest, LoadOfExactlyTheRatingLeavesTheBatteryAlone)
{
    laptop.setLoad(67.0);
    laptop.plugIn(AdapterWatts{67});
    EXPECT_EQ(laptop.flows(), (PowerFlows{67.0, 67.0, 0.0}));
}

TEST_F(SimulatedLaptopTest, AFullBatteryIsLeftAlone)
{
    laptop.setLoad(12.0);
    laptop.setPercent(100.0);
    laptop.plugIn(AdapterWatts{67});
    EXPECT_EQ(laptop.flows(), (PowerFlows{12.0, 12.0, 0.0}));
    laptop.advance(kHour);
    EXPECT_EQ(laptop.percent(), 100.0);
}

TEST_F(SimulatedLaptopTest, HeldChargeStaysWhereItIsUntilAllowedAgain)
{
    laptop.setLoad(12.0);
    laptop.plugIn(AdapterWatts{67});
    laptop.holdCharge();
    laptop.advance(kHour);
    EXPECT_EQ(laptop.flows().battery, 0.0);
    EXPECT_EQ(laptop.percent(), SimulatedLaptop::kStartPercent);
    laptop.allowCharge();
    EXPECT_EQ(laptop.flows().battery, 55.0);
}

TEST_F(SimulatedLaptopTest, ChargeFallsByWhatTheBatteryGives)
{
    laptop.setLoad(14.0);
    laptop.advance(kHour / 2);
    EXPECT_NEAR(laptop.percent(), 62.0 - 7.0 / SimulatedBattery::kCapacityWattHours * 100.0, 1e-9);
}

TEST_F(SimulatedLaptopTest, ChargeRisesByWhatTheBatteryStoresOfWhatItTakes)
{
    laptop.setPercent(30.0);
    laptop.setLoad(17.0);
    laptop.plugIn(AdapterWatts{67});
    laptop.advance(kHour / 10);
    const double stored = 5.0 * SimulatedBattery::kChargeEfficiency;
    EXPECT_NEAR(laptop.percent(), 30.0 + stored / SimulatedBattery::kCapacityWattHours * 100.0, 1e-9);
}

TEST_F(SimulatedLaptopTest, PercentFollowsTheBatterysFlowOnEveryWay)
{
    // Whatever happens, the change of charge is what flowed.
    const int ratings[] = {0, 30, 140, 20, 0, 67, 96};
    for (const int rating : ratings) {
        if (rating == 0)
            laptop.unplug();
        else
            laptop.plugIn(AdapterWatts{rating});
        for (int second = 0; second < 900; ++second) {
            const double before = laptop.percent();
            const double battery = laptop.flows().battery;
            const double stored = battery > 0 ? battery * SimulatedBattery::kChargeEfficiency : battery;
            laptop.advance(1.0);
            const double expected = before + stored / kHour / SimulatedBattery::kCapacityWattHours * 100.0;
            ASSERT_NEAR(laptop.percent(), std::clamp(expected, 0.0, 100.0), 1e-9) << rating;
        }
    }
}

TEST_F(SimulatedLaptopTest, FlowsBalanceAndPercentStaysInRangeThroughALongWanderingDay)
{
    int hours = 0;
    for (const int rating : {0, 0, 0, 20, 30, 67, 67, 0, 140, 96, 0, 0, 0, 0, 0, 0, 0, 0, 20, 140}) {
        if (rating == 0)
            laptop.unplug();
        else
            laptop.plugIn(AdapterWatts{rating});
        for (int step = 0; step < 900; ++step) {
            laptop.advance(4.0);
            expectBalance();
            ASSERT_LE(laptop.flows().adapterIn, rating + 1e-9);
            ASSERT_GE(laptop.percent(), 0.0);
            ASSERT_LE(laptop.percent(), 100.0);
        }
        ++hours;
    }
    EXPECT_NEAR(laptop.elapsedSeconds(), hours * kHour, 1e-6);
}

TEST_F(SimulatedLaptopTest, ChargingSlowsDownTowardsFullAndEndsExactlyThere)
{
    laptop.setLoad(10.0);
    laptop.plugIn(AdapterWatts{140});
    laptop.setPercent(SimulatedBattery::kTaperPercent);
    double before = laptop.flows().battery;
    EXPECT_EQ(before, SimulatedBattery::kMostChargingWatts);
    while (laptop.percent() < 100.0) {
        laptop.advance(30.0);
        ASSERT_LT(laptop.flows().battery, before);
        before = laptop.flows().battery;
        ASSERT_LT(laptop.elapsedSeconds(), 3 * kHour);
    }
    EXPECT_EQ(laptop.percent(), 100.0);
    EXPECT_EQ(laptop.flows().battery, 0.0);
}

TEST_F(SimulatedLaptopTest, AFullBatteryIsToppedUpOnlyAfterSomeUse)
{
    laptop.setPercent(100.0);
    laptop.setLoad(30.0);
    laptop.plugIn(AdapterWatts{20});
    while (laptop.percent() > 97.0)
        laptop.advance(10.0);
    laptop.plugIn(AdapterWatts{67});
    EXPECT_EQ(laptop.flows().battery, 0.0);
    laptop.unplug();
    while (laptop.percent() > SimulatedBattery::kTopUpPercent)
        laptop.advance(1.0);
    laptop.plugIn(AdapterWatts{67});
    EXPECT_GT(laptop.flows().battery, 0.0);
}

TEST_F(SimulatedLaptopTest, AChargeThatIsSetHasNoHistory)
{
    laptop.setLoad(12.0);
    laptop.plugIn(AdapterWatts{67});
    laptop.setPercent(100.0);
    laptop.setPercent(97.0);
    EXPECT_GT(laptop.flows().battery, 0.0);
}

TEST_F(SimulatedLaptopTest, AlmostEmptyTheMachineSlowsDownUnlessPlugged)
{
    laptop.setLoad(40.0);
    laptop.setPercent(1.9);
    EXPECT_EQ(laptop.flows(), (PowerFlows{6.0, 0.0, -6.0}));
    laptop.plugIn(AdapterWatts{67});
    EXPECT_EQ(laptop.flows(), (PowerFlows{40.0, 67.0, 27.0}));
}

TEST_F(SimulatedLaptopTest, AnEmptyBatteryWithoutPowerIsAMachineThatIsOff)
{
    laptop.setPercent(1.0);
    laptop.advance(kHour);
    EXPECT_EQ(laptop.percent(), 0.0);
    EXPECT_EQ(laptop.flows(), PowerFlows{});
    laptop.advance(kHour);
    EXPECT_EQ(laptop.percent(), 0.0);
}

TEST_F(SimulatedLaptopTest, AnEmptyBatteryCannotHelpSoTheMachineMakesDo)
{
    laptop.setPercent(0.0);
    laptop.setLoad(28.0);
    laptop.plugIn(AdapterWatts{20});
    EXPECT_EQ(laptop.flows(), (PowerFlows{20.0, 20.0, 0.0}));
}

TEST_F(SimulatedLaptopTest, TheBatteryGivesNoMoreThanItCan)
{
    laptop.setLoad(500.0);
    EXPECT_EQ(laptop.flows(), (PowerFlows{120.0, 0.0, -120.0}));
}

TEST_F(SimulatedLaptopTest, WithoutABatteryTheAdapterIsAllThereIs)
{
    laptop.removeBattery();
    laptop.setLoad(80.0);
    EXPECT_EQ(laptop.flows(), PowerFlows{});
    laptop.plugIn(AdapterWatts{67});
    EXPECT_EQ(laptop.flows(), (PowerFlows{67.0, 67.0, 0.0}));
    laptop.advance(kHour);
    laptop.insertBattery();
    EXPECT_EQ(laptop.percent(), SimulatedLaptop::kStartPercent) << "it lay on the table";
}

TEST_F(SimulatedLaptopTest, PercentBeyondItsRangeIsTakenAsTheNearestInIt)
{
    laptop.setPercent(130.0);
    EXPECT_EQ(laptop.percent(), 100.0);
    laptop.setPercent(-3.0);
    EXPECT_EQ(laptop.percent(), 0.0);
}

TEST_F(SimulatedLaptopTest, ALoadThatWasSetWandersAgainOnRequest)
{
    const double wandering = laptop.flows().systemLoad;
    laptop.setLoad(77.0);
    EXPECT_EQ(laptop.flows().systemLoad, 77.0);
    laptop.letLoadWander();
    EXPECT_EQ(laptop.flows().systemLoad, wandering);
}

TEST_F(SimulatedLaptopTest, TimeThatDoesNotMoveChangesNothing)
{
    const double percent = laptop.percent();
    const PowerFlows flows = laptop.flows();
    laptop.advance(0.0);
    EXPECT_EQ(laptop.elapsedSeconds(), 0.0);
    EXPECT_EQ(laptop.percent(), percent);
    EXPECT_EQ(laptop.flows(), flows);
}

TEST(WanderingLoadTest, StaysWithinItsBounds)
{
    const WanderingLoad load;
    for (double second = 0; second < 24 * kHour; second += 1.7) {
        ASSERT_GE(load.ordinaryWattsAt(second), WanderingLoad::kLowestWatts);
        ASSERT_LE(load.ordinaryWattsAt(second), WanderingLoad::kHighestOrdinaryWatts);
        ASSERT_GE(load.wattsAt(second), load.ordinaryWattsAt(second));
        ASSERT_LE(load.wattsAt(second), WanderingLoad::kHighestWatts);
    }
}

TEST(WanderingLoadTest, IdlesBurstsAndBoostsWithinAnHour)
{
    const WanderingLoad load;
    double lowest = 1000;
    double highest = 0;
    double highestOrdinary = 0;
    for (double second = 0; second < kHour; second += 1.0) {
        lowest = std::min(lowest, load.wattsAt(second));
        highest = std::max(highest, load.wattsAt(second));
        highestOrdinary = std::max(highestOrdinary, load.ordinaryWattsAt(second));
    }
    EXPECT_LT(lowest, 7.0);
    EXPECT_GT(highestOrdinary, 35.0);
    EXPECT_GT(highest, 90.0);
}

TEST(WanderingLoadTest, MovesWithoutJumps)
{
    const WanderingLoad load;
    for (double second = 0; second < kHour; second += 0.1)
        ASSERT_NEAR(load.wattsAt(second), load.wattsAt(second + 0.1), 2.0) << second;
}

TEST(WanderingLoadTest, TheSameSeedIsTheSameLoadAndAnotherIsNot)
{
    int different = 0;
    for (double second = 0; second < 600; second += 1.0) {
        ASSERT_EQ(WanderingLoad(5).wattsAt(second), WanderingLoad(5).wattsAt(second));
        different += WanderingLoad(5).wattsAt(second) != WanderingLoad(6).wattsAt(second) ? 1 : 0;
    }
    EXPECT_GT(different, 500);
}

} // namespace
} // namespace amperly
