#include "platform/linux/power/power_balance.h"

#include <gtest/gtest.h>

namespace amperly {

void PrintTo(const PowerBalance& balance, std::ostream* out)
{
    const auto figure = [&](const char* name, std::optional<double> watts) {
        *out << name << ' ';
        if (watts)
            *out << *watts << " W ";
        else
            *out << "unknown ";
    };
    figure("battery", balance.battery);
    figure("adapter", balance.adapterIn);
    figure("load", balance.systemLoad);
}

namespace {

constexpr std::optional<double> kUnknown = std::nullopt;

BatteryFigures batteryOf(std::optional<double> watts)
{
    return {.count = 1, .watts = watts, .hasRate = watts && *watts != 0};
}

PowerBalance balanceOf(
    std::optional<double> battery, std::optional<double> adapterIn, std::optional<double> load)
{
    return {.battery = battery, .adapterIn = adapterIn, .systemLoad = load};
}

TEST(PowerBalanceTest, OnBatteryItCarriesTheLoad)
{
    EXPECT_EQ(powerBalance(false, batteryOf(-12.5), {}), balanceOf(-12.5, 0, 12.5));
}

TEST(PowerBalanceTest, OnBatteryWithoutRateTheLoadIsUnknownRatherThanNothing)
{
    EXPECT_EQ(powerBalance(false, batteryOf(kUnknown), {}), balanceOf(kUnknown, 0, kUnknown));
    EXPECT_EQ(powerBalance(false, batteryOf(0), {}), balanceOf(kUnknown, 0, kUnknown));
}

TEST(PowerBalanceTest, OnBatteryAMeterOfTheLoadTellsTheBatteryToo)
{
    EXPECT_EQ(powerBalance(false, batteryOf(0), {.systemLoad = 9}), balanceOf(-9, 0, 9));
}

TEST(PowerBalanceTest, OnBatteryTheBatteryIsBelievedFirst)
{
    EXPECT_EQ(powerBalance(false, batteryOf(-12), {.systemLoad = 9, .adapterIn = 3}), balanceOf(-12, 0, 12));
}

TEST(PowerBalanceTest, OnBatteryOneThatFillsTellsNoLoad)
{
    EXPECT_EQ(powerBalance(false, batteryOf(6), {}), balanceOf(6, 0, kUnknown));
    EXPECT_EQ(powerBalance(false, batteryOf(6), {.systemLoad = 9}), balanceOf(6, 0, 9));
}

TEST(PowerBalanceTest, PluggedInWithoutMeterOnlyTheBatteryIsKnown)
{
    EXPECT_EQ(powerBalance(true, batteryOf(20), {}), balanceOf(20, kUnknown, kUnknown));
    EXPECT_EQ(powerBalance(true, batteryOf(0), {}), balanceOf(0, kUnknown, kUnknown));
    EXPECT_EQ(powerBalance(true, batteryOf(-5), {}), balanceOf(-5, kUnknown, kUnknown));
}

TEST(PowerBalanceTest, OneMeterTellsTheOtherFlow)
{
    EXPECT_EQ(powerBalance(true, batteryOf(20), {.systemLoad = 15}), balanceOf(20, 35, 15));
    EXPECT_EQ(powerBalance(true, batteryOf(20), {.adapterIn = 35}), balanceOf(20, 35, 15));
    EXPECT_EQ(powerBalance(true, batteryOf(-5), {.systemLoad = 50}), balanceOf(-5, 45, 50));
}

TEST(PowerBalanceTest, BothMetersTellASilentBattery)
{
    EXPECT_EQ(
        powerBalance(true, batteryOf(kUnknown), {.systemLoad = 15, .adapterIn = 35}), balanceOf(20, 35, 15));
}

TEST(PowerBalanceTest, SilentBatteryLeavesTheOtherFlowOpen)
{
    EXPECT_EQ(powerBalance(true, batteryOf(kUnknown), {.systemLoad = 15}), balanceOf(kUnknown, kUnknown, 15));
}

TEST(PowerBalanceTest, MetersThatDisagreeGiveNothingNegative)
{
    EXPECT_EQ(powerBalance(true, batteryOf(-20), {.systemLoad = 15}), balanceOf(-20, 0, 15));
    EXPECT_EQ(powerBalance(true, batteryOf(20), {.adapterIn = 15}), balanceOf(20, 15, 0));
}

TEST(PowerBalanceTest, WithoutBatteryAllThatComesInIsDrawn)
{
    EXPECT_EQ(powerBalance(true, {}, {.systemLoad = 80}), balanceOf(kUnknown, 80, 80));
    EXPECT_EQ(powerBalance(true, {}, {}), balanceOf(kUnknown, kUnknown, kUnknown));
}

TEST(PowerBalanceTest, UnclearConnectionClaimsNothing)
{
    EXPECT_EQ(powerBalance(std::nullopt, batteryOf(0), {}), balanceOf(0, kUnknown, kUnknown));
}

} // namespace
} // namespace amperly
