// The reader on a whole simulated laptop, whose controller lays its records out by itself.

#include "platform/simulated/laptop/simulated_laptop.h"
#include "telemetry/power_reader.h"
#include "tests/support/print_sample.h"

#include <gtest/gtest.h>

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
        const std::optional<PowerSample> sample = PowerReader::read();
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

    SimulatedLaptop laptop;
    PowerReader::Sources sources{laptop.smc(), laptop.registry()};
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
    EXPECT_EQ(PowerReader::read(), std::nullopt);
}

TEST_F(PowerReaderOnLaptopTest, LostMeterIsAnUnknownFigure)
{
    laptop.loseController();
    laptop.loseMeter(Meter::SystemLoad);
    laptop.loseMeter(Meter::AdapterIn);
    EXPECT_FALSE(read().systemLoadKnown);
    EXPECT_FALSE(read().adapterInKnown);
    EXPECT_TRUE(read().batteryKnown);
    EXPECT_NEAR(read().battery, laptop.flows().battery, kMilliwattTolerance);
}

} // namespace
} // namespace amperly
