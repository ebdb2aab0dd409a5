// Readings that come from the battery's registry entry, and what it says beside them.

#include "platform/battery_entry.h"
#include "telemetry/power_reader.h"
#include "tests/support/print_sample.h"
#include "tests/telemetry/canned_registry.h"
#include "tests/telemetry/canned_smc.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace amperly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t operator""_i(unsigned long long value)
{
    return static_cast<std::int64_t>(value);
}

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();

class PowerReaderRegistryTest : public testing::Test {
protected:
    void SetUp() override { controller.opening = {}; }

    void plugIn(RegistryScalar ratedWatts)
    {
        registry.set("ExternalConnected", true);
        registry.set("AdapterDetails", dictionary({{"Watts", ratedWatts}}));
    }
    void measure(std::initializer_list<std::pair<std::string_view, RegistryScalar>> entries)
    {
        registry.set("PowerTelemetryData", dictionary(entries));
    }

    /// The sample, which there must be.
    PowerSample read()
    {
        const std::optional<PowerSample> sample = reader.read();
        EXPECT_TRUE(sample.has_value());
        return sample.value_or(PowerSample{});
    }

    CannedSmc controller;
    CannedRegistry registry;
    PowerReader reader{controller, registry};
};

TEST_F(PowerReaderRegistryTest, NoSourceAtAllIsNoReading)
{
    registry.present = false;
    EXPECT_EQ(reader.read(), std::nullopt);
    EXPECT_THAT(registry.foundClasses, ElementsAre("AppleSmartBattery"));
    EXPECT_THAT(registry.copiedNames, IsEmpty());
    EXPECT_THAT(registry.releasedEntries, IsEmpty());
}

TEST_F(PowerReaderRegistryTest, EmptyEntryIsAReadingOfNothingFlowing)
{
    EXPECT_EQ(read(), (PowerSample{0.0, 0.0, 0.0, {}, {}, false}));
}

TEST_F(PowerReaderRegistryTest, SixPropertiesAreCopiedOnceFromOneEntryThatIsGivenBack)
{
    plugIn(67_i);
    measure({{"BatteryPower", 20'000_i}, {"SystemPowerIn", 32'000_i}, {"SystemLoad", 12'000_i}});
    read();
    EXPECT_THAT(registry.foundClasses, ElementsAre("AppleSmartBattery"));
    EXPECT_THAT(registry.copiedNames,
        ElementsAre("ExternalConnected", "AdapterDetails", "CurrentCapacity", "PowerTelemetryData", "Voltage",
            "InstantAmperage"));
    EXPECT_THAT(registry.releasedEntries, ElementsAre(CannedRegistry::kEntry));
    EXPECT_FALSE(registry.copiedFromElsewhere);
}

TEST_F(PowerReaderRegistryTest, MilliwattsBecomeWatts)
{
    measure({{"BatteryPower", 20'500_i}, {"SystemPowerIn", 32'750_i}, {"SystemLoad", 12'001_i}});
    EXPECT_EQ(read(), (PowerSample{12.001, 32.75, 20.5, {}, {}, false}));
}

TEST_F(PowerReaderRegistryTest, MissingLoadIsWhatTheAdapterGivesAndTheBatteryAdds)
{
    measure({{"BatteryPower", -7250_i}, {"SystemPowerIn", 0_i}});
    EXPECT_EQ(read(), (PowerSample{7.25, 0.0, -7.25, {}, {}, false}));
}

TEST_F(PowerReaderRegistryTest, WithoutTelemetryVoltageTimesCurrentIsTheBattery)
{
    registry.set("Voltage", 12000_i);
    registry.set("InstantAmperage", -500_i);
    EXPECT_EQ(read(), (PowerSample{6.0, 0.0, -6.0, {}, {}, false}));
}

TEST_F(PowerReaderRegistryTest, MeasuredBatteryPowerComesBeforeVoltageTimesCurrent)
{
    registry.set("Voltage", 12000_i);
    registry.set("InstantAmperage", -500_i);
    measure({{"BatteryPower", 0_i}});
    EXPECT_EQ(read().battery, 0.0);
}

TEST_F(PowerReaderRegistryTest, VoltageKeepsItsFractionAndCurrentLosesIt)
{
    registry.set("Voltage", 12345.5);
    registry.set("InstantAmperage", 1000.9);
    EXPECT_DOUBLE_EQ(read().battery, 12.3455);
}

TEST_F(PowerReaderRegistryTest, VoltageOrCurrentOfAnotherTypeCountsAsZero)
{
    registry.set("Voltage", true);
    registry.set("InstantAmperage", -500_i);
    EXPECT_EQ(read().battery, 0.0);
    registry.set("Voltage", 12000_i);
    registry.set("InstantAmperage", RegistryDictionary());
    EXPECT_EQ(read().battery, 0.0);
}

TEST_F(PowerReaderRegistryTest, VoltageAndCurrentInsideTheTelemetryAreNotTheEntrysOwn)
{
    measure({{"Voltage", 12000_i}, {"InstantAmperage", -500_i}});
    EXPECT_EQ(read().battery, 0.0);
}

TEST_F(PowerReaderRegistryTest, ProductOfTheLargestCurrentAndVoltageDoesNotWrap)
{
    registry.set("Voltage", kMost);
    registry.set("InstantAmperage", kMost);
    EXPECT_GT(read().battery, 1e30);
}

TEST_F(PowerReaderRegistryTest, NegativeLoadAndAdapterAreZeroAndTheBatteryStaysAsItIs)
{
    measure({{"BatteryPower", -3000_i}, {"SystemPowerIn", -1_i}, {"SystemLoad", -250_i}});
    EXPECT_EQ(read(), (PowerSample{0.0, 0.0, -3.0, {}, {}, false}));
}

TEST_F(PowerReaderRegistryTest, LoadIsWorkedOutFromTheAdapterAsItIs)
{
    measure({{"BatteryPower", -3000_i}, {"SystemPowerIn", -1000_i}});
    EXPECT_EQ(read(), (PowerSample{2.0, 0.0, -3.0, {}, {}, false}));
}

TEST_F(PowerReaderRegistryTest, WhatIsNotANumberBecomesZeroWhereFlowsAreClamped)
{
    registry.set("Voltage", kNotANumber);
    registry.set("InstantAmperage", 1000_i);
    const PowerSample sample = read();
    EXPECT_TRUE(std::isnan(sample.battery)) << "the battery is not clamped";
    EXPECT_EQ(sample.systemLoad, 0.0);
    EXPECT_EQ(sample.adapterIn, 0.0);
}

TEST_F(PowerReaderRegistryTest, TelemetryThatIsNoDictionaryIsEmpty)
{
    for (const RegistryProperty& odd :
        {RegistryProperty(true), RegistryProperty(5_i), RegistryProperty(2.5)}) {
        registry.set("PowerTelemetryData", odd);
        EXPECT_EQ(read(), (PowerSample{0.0, 0.0, 0.0, {}, {}, false}));
    }
}

TEST_F(PowerReaderRegistryTest, TelemetryEntryThatIsNoNumberIsMissing)
{
    registry.set("Voltage", 10000_i);
    registry.set("InstantAmperage", -300_i);
    measure({{"BatteryPower", true}, {"SystemPowerIn", std::monostate()}, {"SystemLoad", false}});
    EXPECT_EQ(read(), (PowerSample{3.0, 0.0, -3.0, {}, {}, false}));
}

TEST_F(PowerReaderRegistryTest, FractionOfAMilliwattIsDropped)
{
    measure({{"BatteryPower", -1.9}, {"SystemPowerIn", 999.9}, {"SystemLoad", 1000.5}});
    EXPECT_EQ(read(), (PowerSample{1.0, 0.999, -0.001, {}, {}, false}));
}

TEST_F(PowerReaderRegistryTest, MilliwattsThatNoIntegerHoldsSaturate)
{
    measure({{"BatteryPower", -kInfinity}, {"SystemPowerIn", kInfinity}, {"SystemLoad", kNotANumber}});
    const PowerSample sample = read();
    EXPECT_EQ(sample.battery, static_cast<double>(std::numeric_limits<std::int64_t>::min()) / 1000.0);
    EXPECT_EQ(sample.adapterIn, static_cast<double>(kMost) / 1000.0);
    EXPECT_EQ(sample.systemLoad, 0.0);
}

TEST_F(PowerReaderRegistryTest, RatingOfTheConnectedAdapterIsTold)
{
    plugIn(96_i);
    EXPECT_EQ(read().adapterRating, 96);
    EXPECT_TRUE(read().externalConnected);
}

TEST_F(PowerReaderRegistryTest, RatingOfAnUnpluggedAdapterIsIgnored)
{
    plugIn(96_i);
    registry.set("ExternalConnected", false);
    EXPECT_EQ(read().adapterRating, std::nullopt);
    EXPECT_FALSE(read().externalConnected);
}

TEST_F(PowerReaderRegistryTest, MissingConnectionStateIsNotConnectedAndHidesTheRating)
{
    plugIn(96_i);
    registry.properties.erase("ExternalConnected");
    EXPECT_EQ(read(), (PowerSample{0.0, 0.0, 0.0, {}, {}, false}));
}

TEST_F(PowerReaderRegistryTest, ConnectionStateOfAnotherTypeIsNotConnected)
{
    for (const RegistryProperty& odd :
        {RegistryProperty(1_i), RegistryProperty(1.0), RegistryProperty(dictionary({{"Watts", 96_i}}))}) {
        plugIn(96_i);
        registry.set("ExternalConnected", odd);
        EXPECT_FALSE(read().externalConnected);
        EXPECT_EQ(read().adapterRating, std::nullopt);
    }
}

TEST_F(PowerReaderRegistryTest, RatingIsAbsentWithoutANumberUnderItsName)
{
    registry.set("ExternalConnected", true);
    for (const RegistryProperty& odd :
        {RegistryProperty(), RegistryProperty(96_i), RegistryProperty(RegistryDictionary()),
            RegistryProperty(dictionary({{"watts", 96_i}})), RegistryProperty(dictionary({{"Watts", true}})),
            RegistryProperty(dictionary({{"Watts", std::monostate()}}))}) {
        registry.set("AdapterDetails", odd);
        EXPECT_EQ(read().adapterRating, std::nullopt);
        EXPECT_TRUE(read().externalConnected);
    }
}

TEST_F(PowerReaderRegistryTest, RatingIsWholeAndSaturates)
{
    plugIn(67.9);
    EXPECT_EQ(read().adapterRating, 67);
    plugIn(kMost);
    EXPECT_EQ(read().adapterRating, std::numeric_limits<int>::max());
    plugIn(-kInfinity);
    EXPECT_EQ(read().adapterRating, std::numeric_limits<int>::min());
    plugIn(2147483647.5);
    EXPECT_EQ(read().adapterRating, std::numeric_limits<int>::max());
    plugIn(kNotANumber);
    EXPECT_EQ(read().adapterRating, 0);
}

TEST_F(PowerReaderRegistryTest, ChargeIsTakenAsPercentDirectly)
{
    registry.set("CurrentCapacity", 4200_i);
    registry.set("MaxCapacity", 5000_i);
    EXPECT_EQ(read().batteryPercent, 4200);
}

TEST_F(PowerReaderRegistryTest, ChargeLosesItsFraction)
{
    registry.set("CurrentCapacity", 79.9);
    EXPECT_EQ(read().batteryPercent, 79);
}

TEST_F(PowerReaderRegistryTest, ChargeThatIsNoNumberIsAbsent)
{
    for (const RegistryProperty& odd :
        {RegistryProperty(), RegistryProperty(true), RegistryProperty(RegistryDictionary())}) {
        registry.set("CurrentCapacity", odd);
        EXPECT_EQ(read().batteryPercent, std::nullopt);
    }
}

TEST_F(PowerReaderRegistryTest, FiguresAreAllKnown)
{
    const PowerSample sample = read();
    EXPECT_TRUE(sample.systemLoadKnown);
    EXPECT_TRUE(sample.adapterInKnown);
    EXPECT_TRUE(sample.batteryKnown);
    EXPECT_TRUE(sample.externalKnown);
}

TEST_F(PowerReaderRegistryTest, EveryReadingLooksAfresh)
{
    registry.set("CurrentCapacity", 50_i);
    read();
    registry.set("CurrentCapacity", 49_i);
    EXPECT_EQ(read().batteryPercent, 49);
    EXPECT_EQ(registry.foundClasses.size(), 2u);
    EXPECT_EQ(registry.releasedEntries.size(), 2u);
}

} // namespace
} // namespace amperly
