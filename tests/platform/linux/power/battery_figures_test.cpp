#include "platform/linux/power/battery_figures.h"

#include "tests/platform/linux/power/supplies_in_words.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

BatteryFigures figures(const std::vector<SupplyReading>& supplies)
{
    return batteryFigures(supplies);
}

TEST(BatteryFiguresTest, NoBatteryHasNoFigures)
{
    const BatteryFigures none = figures({mains("1")});
    EXPECT_EQ(none.count, 0);
    EXPECT_EQ(none.watts, std::nullopt);
    EXPECT_EQ(none.percent, std::nullopt);
}

TEST(BatteryFiguresTest, DirectionComesFromTheStatusWhateverTheSign)
{
    for (const char* power : {"8597000", "-8597000"}) {
        EXPECT_EQ(figures({battery({{"status", "Discharging"}, {"power_now", power}})}).watts, -8.597);
        EXPECT_EQ(figures({battery({{"status", "Charging"}, {"power_now", power}})}).watts, 8.597);
    }
}

TEST(BatteryFiguresTest, WithoutPowerItIsCurrentTimesVoltage)
{
    const BatteryFigures one = figures(
        {battery({{"status", "Discharging"}, {"current_now", "2000000"}, {"voltage_now", "11500000"}})});
    EXPECT_EQ(one.watts, -23.0);
}

TEST(BatteryFiguresTest, DesignVoltageIsNoVoltage)
{
    EXPECT_EQ(figures({battery({{"status", "Discharging"}, {"current_now", "2000000"},
                          {"voltage_min_design", "11400000"}})})
                  .watts,
        std::nullopt);
}

TEST(BatteryFiguresTest, ImplausibleVoltageMakesThePowerUnknown)
{
    for (const char* voltage : {"0", "12500", "999000", "101000000", "-12000000"}) {
        EXPECT_EQ(
            figures(
                {battery({{"status", "Discharging"}, {"current_now", "2000000"}, {"voltage_now", voltage}})})
                .watts,
            std::nullopt)
            << voltage;
    }
}

TEST(BatteryFiguresTest, MoreThanThreeHundredWattsIsUnknown)
{
    EXPECT_EQ(figures({battery({{"status", "Charging"}, {"power_now", "300000000"}})}).watts, 300.0);
    EXPECT_EQ(figures({battery({{"status", "Charging"}, {"power_now", "300000001"}})}).watts, std::nullopt);
    EXPECT_EQ(figures({battery({{"status", "Charging"}, {"power_now", "-9223372036854775808"}})}).watts,
        std::nullopt);
}

TEST(BatteryFiguresTest, FirmwareFloorOfOneMilliampereIsIdle)
{
    for (const char* status : {"Full", "Not charging", "Unknown"}) {
        for (const char* current : {"0", "1000", "1500", "-1000"}) {
            const BatteryFigures one = figures(
                {battery({{"status", status}, {"current_now", current}, {"voltage_now", "17447000"}})});
            EXPECT_EQ(one.watts, 0.0) << status << ' ' << current;
            EXPECT_FALSE(one.hasRate);
        }
    }
}

TEST(BatteryFiguresTest, IdleNeedsNoVoltage)
{
    for (const char* status : {"Full", "Not charging", "Unknown"}) {
        for (const char* current : {"0", "1500", "-1000"}) {
            for (const AttributeList& voltage : {AttributeList{}, AttributeList{{"voltage_now", "0"}},
                     AttributeList{{"voltage_now", "12500"}}}) {
                AttributeList attributes{{"status", status}, {"current_now", current}};
                attributes.insert(attributes.end(), voltage.begin(), voltage.end());
                const BatteryFigures one = figures({battery(attributes)});
                EXPECT_EQ(one.watts, 0.0) << status << ' ' << current;
                EXPECT_FALSE(one.hasRate);
            }
        }
    }
}

TEST(BatteryFiguresTest, WithoutVoltageAnyOtherRateIsUnknown)
{
    EXPECT_EQ(figures({battery({{"status", "Full"}, {"current_now", "1501"}})}).watts, std::nullopt);
    EXPECT_EQ(figures({battery({{"status", "Discharging"}, {"current_now", "0"}})}).watts, std::nullopt);
    EXPECT_EQ(figures({battery({{"status", "Full"}})}).watts, std::nullopt);
}

TEST(BatteryFiguresTest, RealCurrentWithoutDirectionIsUnknown)
{
    for (const char* status : {"Full", "Not charging", "Unknown", "Confused"}) {
        EXPECT_EQ(
            figures({battery({{"status", status}, {"current_now", "1501"}, {"voltage_now", "17000000"}})})
                .watts,
            std::nullopt)
            << status;
        EXPECT_EQ(figures({battery({{"status", status}, {"power_now", "-4000000"}})}).watts, std::nullopt);
    }
}

TEST(BatteryFiguresTest, DriverThatIsKnownToSignItsRateNeedsNoStatus)
{
    const SupplyReading boosting = supply(
        "macsmc-battery", {{"type", "Battery"}, {"status", "Not charging"}, {"power_now", "-6000000"}});
    EXPECT_EQ(figures({boosting}).watts, -6.0);
    const SupplyReading filling
        = supply("sbs-12-000b", {{"type", "Battery"}, {"status", "Full"}, {"power_now", "300000"}});
    EXPECT_EQ(figures({filling}).watts, 0.3);
}

TEST(BatteryFiguresTest, PowersOfSeveralBatteriesAddUpWithTheirSigns)
{
    const SupplyReading draining = battery({{"status", "Discharging"}, {"power_now", "10000000"}});
    const SupplyReading filling = battery({{"status", "Charging"}, {"power_now", "4000000"}});
    const SupplyReading resting = battery({{"status", "Not charging"}, {"power_now", "0"}});
    EXPECT_EQ(figures({draining, filling, resting}).watts, -6.0);
    EXPECT_TRUE(figures({draining, resting}).hasRate);
}

TEST(BatteryFiguresTest, OneSilentBatteryMakesTheSumUnknown)
{
    EXPECT_EQ(figures({battery({{"status", "Discharging"}, {"power_now", "10000000"}}),
                          battery({{"status", "Discharging"}})})
                  .watts,
        std::nullopt);
}

TEST(BatteryFiguresTest, EmptyBayAddsNothing)
{
    const BatteryFigures one
        = figures({battery({{"status", "Discharging"}, {"power_now", "10000000"}, {"capacity", "40"}}),
            battery({{"present", "0"}, {"status", "Unknown"}, {"capacity", "100"}})});
    EXPECT_EQ(one.count, 1);
    EXPECT_EQ(one.watts, -10.0);
    EXPECT_EQ(one.percent, 40);
}

TEST(BatteryFiguresTest, SeveralBatteriesByCurrentAddUp)
{
    const SupplyReading one
        = battery({{"status", "Charging"}, {"current_now", "1000000"}, {"voltage_now", "12000000"}});
    EXPECT_EQ(figures({one, one}).watts, 24.0);
}

std::optional<int> percent(const AttributeList& attributes)
{
    return figures({battery(attributes)}).percent;
}

TEST(BatteryPercentTest, GaugesOwnWordStays)
{
    EXPECT_EQ(percent({{"capacity", "0"}}), 0);
    EXPECT_EQ(percent({{"capacity", "100"}}), 100);
    EXPECT_EQ(
        percent({{"status", "Full"}, {"capacity", "97"}, {"energy_now", "50"}, {"energy_full", "50"}}), 97);
}

TEST(BatteryPercentTest, SmallOvershootIsFull)
{
    EXPECT_EQ(percent({{"capacity", "101"}}), 100);
    EXPECT_EQ(percent({{"capacity", "105"}}), 100);
}

TEST(BatteryPercentTest, NonsenseIsUnknown)
{
    for (const char* capacity : {"106", "1536", "-1"})
        EXPECT_EQ(
            percent({{"capacity", capacity}, {"charge_now", "40"}, {"charge_full", "50"}}), std::nullopt)
            << capacity;
}

TEST(BatteryPercentTest, WithoutCapacityItIsNowByFull)
{
    EXPECT_EQ(percent({{"charge_now", "3117000"}, {"charge_full", "3900000"}}), 80);
    EXPECT_EQ(percent({{"energy_now", "3117000"}, {"energy_full", "3900000"}}), 80);
    EXPECT_EQ(percent({{"energy_now", "1000"}, {"energy_full", "0"}}), std::nullopt);
    EXPECT_EQ(percent({{"energy_now", "9000000"}, {"energy_full", "1000000"}}), std::nullopt);
    EXPECT_EQ(percent({{"energy_now", "1000"}, {"energy_full_design", "2000"}}), std::nullopt);
}

TEST(BatteryPercentTest, SwappedEnergyYieldsToCharge)
{
    EXPECT_EQ(percent({{"energy_now", "648067200"}, {"energy_full", "70000000"}, {"charge_now", "30"},
                  {"charge_full", "40"}}),
        75);
}

TEST(BatteryPercentTest, BatteriesCountByTheirSize)
{
    const BatteryFigures two
        = figures({battery({{"capacity", "90"}, {"energy_now", "18000000"}, {"energy_full", "20000000"}}),
            battery({{"capacity", "20"}, {"energy_now", "16000000"}, {"energy_full", "80000000"}})});
    EXPECT_EQ(two.percent, 34);
}

TEST(BatteryPercentTest, MeanOfTheGaugesIsTheLastResort)
{
    EXPECT_EQ(figures({battery({{"capacity", "90"}, {"energy_now", "18"}, {"energy_full", "20"}}),
                          battery({{"capacity", "20"}, {"charge_now", "16"}, {"charge_full", "80"}})})
                  .percent,
        55);
    EXPECT_EQ(figures({battery({{"capacity", "90"}}), battery({})}).percent, std::nullopt);
}

} // namespace
} // namespace amperly
