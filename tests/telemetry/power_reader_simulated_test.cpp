// The reader on a whole simulated laptop, whose controller lays its records out by itself.

#include "platform/simulated/laptop/manual_timer_source.h"
#include "platform/simulated/laptop/simulated_laptop.h"
#include "telemetry/power_reader.h"
#include "tests/support/print_sample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace amperly {
namespace {

class PowerReaderOnLaptopTest : public testing::Test {
protected:
    ~PowerReaderOnLaptopTest() override
    {
        EXPECT_EQ(laptop.registry().outstandingEntries(), 0);
        EXPECT_EQ(laptop.registry().misuses(), 0);
        EXPECT_EQ(laptop.smc().misuses(), 0);
    }

    PowerSample read()
    {
        const std::optional<PowerSample> sample = reader.read();
        EXPECT_TRUE(sample.has_value());
        return sample.value_or(PowerSample{});
    }

    void expectFlowsOfTheLaptop(double toleranceWatts)
    {
        const PowerSample sample = read();
        const PowerFlows flows = laptop.flows();
        EXPECT_NEAR(sample.systemLoad, flows.systemLoad, toleranceWatts);
        EXPECT_NEAR(sample.adapterIn, flows.adapterIn, toleranceWatts);
        EXPECT_NEAR(sample.battery, flows.battery, toleranceWatts);
        EXPECT_EQ(sample.externalConnected, laptop.isPluggedIn());
    }

    static constexpr double kFloatTolerance = 1e-4;
    static constexpr double kMilliwattTolerance = 5.1e-4;
    static constexpr double kVoltageTimesCurrentTolerance = 0.02;

    SimulatedLaptop laptop;
    PowerReader reader{laptop.smc(), laptop.registry()};
};

TEST_F(PowerReaderOnLaptopTest, ControllerTellsTheLaptopsFlowsWhateverItsCharger)
{
    expectFlowsOfTheLaptop(kFloatTolerance);
    for (const int rating : {20, 30, 67, 96, 140}) {
        laptop.plugIn(AdapterWatts{rating});
        laptop.advance(7.0);
        expectFlowsOfTheLaptop(kFloatTolerance);
        EXPECT_EQ(read().adapterRating, rating);
    }
}

TEST_F(PowerReaderOnLaptopTest, RegistryTellsTheLaptopsFlowsWithoutAController)
{
    laptop.loseController();
    expectFlowsOfTheLaptop(kMilliwattTolerance);
    laptop.plugIn(AdapterWatts{67});
    expectFlowsOfTheLaptop(kMilliwattTolerance);
    EXPECT_EQ(laptop.smc().openings(), 1);
    EXPECT_EQ(laptop.smc().openHandles(), 0);
    EXPECT_EQ(laptop.smc().calls(), 0);
}

TEST_F(PowerReaderOnLaptopTest, ControllerLostOnTheWayLeavesTheRegistry)
{
    laptop.plugIn(AdapterWatts{67});
    read();
    laptop.loseController();
    laptop.advance(30.0);
    expectFlowsOfTheLaptop(kMilliwattTolerance);
    laptop.restoreController();
    expectFlowsOfTheLaptop(kFloatTolerance);
    EXPECT_EQ(laptop.smc().openings(), 1);
}

TEST_F(PowerReaderOnLaptopTest, ChargingLaptopCostsThreeCallsAndThreeCopiesAReading)
{
    laptop.plugIn(AdapterWatts{67});
    read();
    const int callsBefore = laptop.smc().calls();
    const int copiesBefore = laptop.registry().copies();
    read();
    EXPECT_EQ(laptop.smc().calls() - callsBefore, 3);
    EXPECT_EQ(laptop.smc().informationCalls(), 3);
    EXPECT_EQ(laptop.registry().copies() - copiesBefore, 3);
    EXPECT_EQ(laptop.registry().finds(), 2);
    EXPECT_EQ(laptop.registry().releases(), 2);
}

TEST_F(PowerReaderOnLaptopTest, AdapterKeyRefusedIsWorkedOutFromTheBattery)
{
    laptop.plugIn(AdapterWatts{67});
    laptop.refuse("PDTR");
    expectFlowsOfTheLaptop(kFloatTolerance);
}

TEST_F(PowerReaderOnLaptopTest, BatteryKeyOfTheWrongTypeIsWorkedOutFromTheAdapter)
{
    laptop.plugIn(AdapterWatts{67});
    laptop.giveWrongType("SBAP");
    expectFlowsOfTheLaptop(kFloatTolerance);
}

TEST_F(PowerReaderOnLaptopTest, InfiniteSystemPowerSendsTheReadingToTheRegistry)
{
    laptop.giveInfinity("PSTR");
    expectFlowsOfTheLaptop(kMilliwattTolerance);
    EXPECT_EQ(laptop.registry().copies(), 6);
    laptop.behave("PSTR");
    expectFlowsOfTheLaptop(kFloatTolerance);
    EXPECT_EQ(laptop.registry().copies(), 6 + 3);
}

TEST_F(PowerReaderOnLaptopTest, WithoutABatteryThereIsNoChargeAndNoFlowIntoIt)
{
    laptop.removeBattery();
    laptop.plugIn(AdapterWatts{67});
    EXPECT_EQ(read().batteryPercent, std::nullopt);
    EXPECT_NEAR(read().battery, 0.0, kFloatTolerance);
    laptop.loseController();
    EXPECT_EQ(read().batteryPercent, std::nullopt);
    EXPECT_EQ(read().battery, 0.0);
}

TEST_F(PowerReaderOnLaptopTest, NeitherSourceIsNoReading)
{
    laptop.loseController();
    laptop.refuse("AppleSmartBattery");
    EXPECT_EQ(reader.read(), std::nullopt);
}

TEST_F(PowerReaderOnLaptopTest, FigureThatTheEntryLacksIsWorkedOutFromTheOthers)
{
    laptop.loseController();
    laptop.plugIn(AdapterWatts{67});
    for (const char* figure : {"SystemLoad", "BatteryPower"}) {
        laptop.refuse(figure);
        expectFlowsOfTheLaptop(kVoltageTimesCurrentTolerance);
        laptop.behave(figure);
    }
}

TEST_F(PowerReaderOnLaptopTest, AtATickTheLaptopIsWhereItIsAtThatInstant)
{
    ManualTimerSource timers;
    timers.onTimePasses([this](double seconds) { laptop.advance(seconds); });
    std::vector<double> instants;
    std::vector<double> loads;
    const auto timer = timers.start(2.0, 0.5, [&] {
        instants.push_back(laptop.elapsedSeconds());
        loads.push_back(read().systemLoad);
    });
    timers.advance(7.0);
    EXPECT_THAT(instants, testing::ElementsAre(2.0, 4.0, 6.0));
    EXPECT_NEAR(loads[1], WanderingLoad().wattsAt(4.0), kFloatTolerance);
    EXPECT_EQ(laptop.elapsedSeconds(), 7.0);
}

} // namespace
} // namespace amperly
