#include "platform/linux/power/external_power.h"

#include "tests/platform/linux/power/supplies_in_words.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

std::optional<bool> connected(const std::vector<SupplyReading>& supplies)
{
    return externalConnected(supplies, batteryFigures(supplies));
}

std::optional<int> rating(const std::vector<SupplyReading>& supplies)
{
    return adapterRating(supplies);
}

SupplyReading port(const std::string& online, const std::string& microvolts, const std::string& microamperes)
{
    return supply("ucsi-source-psy-USBC000:001",
        {{"type", "USB"}, {"status", "Charging"}, {"online", online}, {"voltage_now", microvolts},
            {"current_now", microamperes}, {"current_max", "5000000"}, {"voltage_max", "20000000"}});
}

TEST(ExternalConnectedTest, AnySupplyOnlineIsEnough)
{
    EXPECT_EQ(connected({mains("0"), port("1", "5000000", "0"), battery({{"status", "Discharging"}})}), true);
}

TEST(ExternalConnectedTest, ProgrammableSupplyIsOnline)
{
    EXPECT_EQ(connected({mains("2"), battery({{"status", "Discharging"}})}), true);
}

TEST(ExternalConnectedTest, ChargingBatteryProvesASourceThatSaysNo)
{
    EXPECT_EQ(connected({mains("0"), battery({{"status", "Charging"}})}), true);
}

TEST(ExternalConnectedTest, StatusOfAPortIsNoBatterys)
{
    EXPECT_EQ(connected({port("0", "5000000", "0"), battery({{"status", "Full"}})}), false);
}

TEST(ExternalConnectedTest, OnlineOfABatteryMeansNothing)
{
    EXPECT_EQ(connected({battery({{"status", "Discharging"}, {"online", "1"}})}), false);
    EXPECT_EQ(connected({battery({{"status", "Unknown"}, {"online", "1"}})}), std::nullopt);
}

TEST(ExternalConnectedTest, ListedSupplyThatIsOfflineMeansNo)
{
    EXPECT_EQ(connected({mains("0"), battery({{"status", "Full"}})}), false);
    EXPECT_EQ(connected({mains("0"), battery({{"status", "Unknown"}})}), false);
}

TEST(ExternalConnectedTest, WithoutBatterySomethingMustPowerTheMachine)
{
    EXPECT_EQ(connected({}), true);
    EXPECT_EQ(connected({battery({{"present", "0"}})}), true);
}

TEST(ExternalConnectedTest, LoneBatteryAtRestHangsOnSomething)
{
    EXPECT_EQ(connected({battery({{"status", "Full"}})}), true);
    EXPECT_EQ(connected({battery({{"status", "Not charging"}})}), true);
    EXPECT_EQ(connected({battery({{"status", "Unknown"}})}), std::nullopt);
}

TEST(ExternalConnectedTest, ChargerThatIsAlwaysOnlineSaysNothing)
{
    const SupplyReading charger = supply("sbs-charger-9", {{"type", "Mains"}, {"online", "1"}});
    EXPECT_EQ(connected({charger, battery({{"status", "Discharging"}})}), false);
    EXPECT_EQ(connected({charger, battery({{"status", "Charging"}})}), true);
    EXPECT_EQ(connected({charger, battery({{"status", "Full"}})}), true);
}

TEST(ExternalConnectedTest, SupplyOfAPenIsNotTheMachines)
{
    const SupplyReading pen = supply("pen", {{"type", "USB"}, {"online", "1"}, {"scope", "Device"}});
    EXPECT_EQ(connected({pen, battery({{"status", "Discharging"}})}), false);
}

TEST(AdapterRatingTest, PlainSocketTellsNothing)
{
    EXPECT_EQ(rating({mains("1")}), std::nullopt);
}

TEST(AdapterRatingTest, ContractOfAPortIsTheRating)
{
    EXPECT_EQ(rating({mains("1"), port("1", "20000000", "3250000")}), 65);
}

TEST(AdapterRatingTest, LargerOfTwoPortsCounts)
{
    EXPECT_EQ(rating({port("1", "5000000", "3000000"), port("1", "20000000", "5000000")}), 100);
}

TEST(AdapterRatingTest, PortWithoutVoltageOrOfflineTellsNothing)
{
    EXPECT_EQ(rating({port("1", "0", "3000000")}), std::nullopt);
    EXPECT_EQ(rating({port("0", "20000000", "3000000")}), std::nullopt);
}

TEST(AdapterRatingTest, ImpossibleContractTellsNothing)
{
    EXPECT_EQ(rating({port("1", "655350000", "65535000")}), std::nullopt);
    EXPECT_EQ(rating({port("1", "-20000000", "3000000")}), std::nullopt);
}

TEST(AdapterRatingTest, ControllerTellsItsInputLimit)
{
    EXPECT_EQ(rating({supply(
                  "macsmc-ac", {{"type", "Mains"}, {"online", "1"}, {"input_power_limit", "96000000"}})}),
        96);
}

TEST(AdapterRatingTest, ChromebooksTellTheirDesignMaximum)
{
    EXPECT_EQ(rating({supply("CROS_USBPD_CHARGER0",
                  {{"type", "USB"}, {"online", "1"}, {"voltage_max_design", "15000000"},
                      {"current_max", "3000000"}, {"voltage_now", "5000000"}, {"current_now", "100000"}})}),
        45);
}

} // namespace
} // namespace amperly
