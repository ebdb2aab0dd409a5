#include "platform/battery_entry.h"
#include "platform/simulated/laptop/simulated_laptop.h"

#include <gtest/gtest.h>

#include <cmath>

namespace amperly {
namespace {

class SimulatedRegistryTest : public testing::Test {
protected:
    SimulatedRegistryTest()
    {
        laptop.setLoad(12.0);
        laptop.plugIn(AdapterWatts{67});
    }

    RegistryProperty property(std::string_view name)
    {
        const RegistryEntry entry = registry.find(battery_entry::kClassName);
        RegistryProperty value = registry.copyProperty(entry, name);
        registry.release(entry);
        return value;
    }
    bool boolean(std::string_view name) { return std::get<bool>(property(name)); }
    std::int64_t integer(std::string_view name) { return std::get<std::int64_t>(property(name)); }
    RegistryScalar entryOf(std::string_view name, std::string_view entry)
    {
        return entryIn(std::get<RegistryDictionary>(property(name)), entry);
    }
    RegistryScalar telemetry(std::string_view entry)
    {
        return entryOf(battery_entry::kPowerTelemetryData, entry);
    }

    static bool isMissing(const RegistryProperty& value)
    {
        return std::holds_alternative<std::monostate>(value);
    }

    SimulatedLaptop laptop;
    SimulatedRegistry& registry = laptop.registry();
};

TEST_F(SimulatedRegistryTest, TelemetryIsTheLaptopsFlowsInMilliwatts)
{
    EXPECT_EQ(telemetry("SystemLoad"), RegistryScalar(std::int64_t{12'000}));
    EXPECT_EQ(telemetry("SystemPowerIn"), RegistryScalar(std::int64_t{67'000}));
    EXPECT_EQ(telemetry("BatteryPower"), RegistryScalar(std::int64_t{55'000}));
}

TEST_F(SimulatedRegistryTest, VoltageTimesCurrentIsTheBatterysPower)
{
    const double watts = static_cast<double>(integer("Voltage"))
        * static_cast<double>(integer("InstantAmperage")) / 1'000'000.0;
    EXPECT_NEAR(watts, 55.0, 0.02);
    laptop.unplug();
    EXPECT_LT(integer("InstantAmperage"), 0);
}

TEST_F(SimulatedRegistryTest, VoltageFallsWithTheCharge)
{
    laptop.setPercent(100.0);
    const std::int64_t full = integer("Voltage");
    laptop.setPercent(0.0);
    EXPECT_LT(integer("Voltage"), full);
    EXPECT_GT(integer("Voltage"), 9000);
}

TEST_F(SimulatedRegistryTest, RatingIsThereWhilePluggedIn)
{
    EXPECT_TRUE(boolean("ExternalConnected"));
    EXPECT_EQ(entryOf("AdapterDetails", "Watts"), RegistryScalar(std::int64_t{67}));
    laptop.unplug();
    EXPECT_FALSE(boolean("ExternalConnected"));
    EXPECT_TRUE(std::get<RegistryDictionary>(property("AdapterDetails")).empty());
}

TEST_F(SimulatedRegistryTest, ChargeIsRoundedToWholePercent)
{
    laptop.setPercent(57.6);
    EXPECT_EQ(integer("CurrentCapacity"), 58);
    laptop.setPercent(100.0);
    EXPECT_EQ(integer("CurrentCapacity"), 100);
}

TEST_F(SimulatedRegistryTest, AFoundEntryShowsTheLaptopAsItWas)
{
    const RegistryEntry entry = registry.find(battery_entry::kClassName);
    laptop.unplug();
    laptop.setPercent(5.0);
    EXPECT_TRUE(std::get<bool>(registry.copyProperty(entry, "ExternalConnected")));
    EXPECT_EQ(std::get<std::int64_t>(registry.copyProperty(entry, "CurrentCapacity")), 62);
    registry.release(entry);
    EXPECT_FALSE(boolean("ExternalConnected"));
}

TEST_F(SimulatedRegistryTest, OtherClassesAndRefusedOnesAreNotFound)
{
    EXPECT_EQ(registry.find("AppleSMC"), 0u);
    laptop.refuse("AppleSmartBattery");
    EXPECT_EQ(registry.find(battery_entry::kClassName), 0u);
    EXPECT_EQ(registry.finds(), 2);
    EXPECT_EQ(registry.outstandingEntries(), 0);
}

TEST_F(SimulatedRegistryTest, EveryAccessIsAccountedFor)
{
    const RegistryEntry first = registry.find(battery_entry::kClassName);
    const RegistryEntry second = registry.find(battery_entry::kClassName);
    EXPECT_NE(first, second);
    EXPECT_EQ(registry.outstandingEntries(), 2);
    EXPECT_TRUE(isMissing(registry.copyProperty(first, "NoSuchProperty")));
    registry.release(first);
    EXPECT_EQ(registry.outstandingEntries(), 1);
    EXPECT_FALSE(isMissing(registry.copyProperty(second, "Voltage")));
    registry.release(second);
    EXPECT_EQ(registry.finds(), 2);
    EXPECT_EQ(registry.copies(), 2);
    EXPECT_EQ(registry.releases(), 2);
    EXPECT_EQ(registry.misuses(), 0);
}

TEST_F(SimulatedRegistryTest, AReleasedEntryIsNoLongerRead)
{
    const RegistryEntry entry = registry.find(battery_entry::kClassName);
    registry.release(entry);
    EXPECT_TRUE(isMissing(registry.copyProperty(entry, "Voltage")));
    registry.release(entry);
    EXPECT_EQ(registry.misuses(), 2);
}

TEST_F(SimulatedRegistryTest, WithoutABatteryTheEntryLacksWhatOnlyABatteryHas)
{
    laptop.removeBattery();
    for (const char* name : {"CurrentCapacity", "Voltage", "InstantAmperage"})
        EXPECT_TRUE(isMissing(property(name))) << name;
    EXPECT_EQ(telemetry("BatteryPower"), RegistryScalar());
    EXPECT_EQ(telemetry("SystemLoad"), RegistryScalar(std::int64_t{12'000}));
    EXPECT_TRUE(boolean("ExternalConnected"));
}

TEST_F(SimulatedRegistryTest, PropertiesFailByName)
{
    laptop.refuse("Voltage");
    EXPECT_TRUE(isMissing(property("Voltage")));
    laptop.giveWrongType("ExternalConnected");
    EXPECT_EQ(integer("ExternalConnected"), 1);
    laptop.giveWrongType("PowerTelemetryData");
    EXPECT_TRUE(boolean("PowerTelemetryData"));
    laptop.giveInfinity("CurrentCapacity");
    EXPECT_TRUE(std::isinf(std::get<double>(property("CurrentCapacity"))));
    laptop.behave("Voltage");
    EXPECT_GT(integer("Voltage"), 0);
}

TEST_F(SimulatedRegistryTest, EntriesOfDictionariesFailByName)
{
    laptop.refuse("SystemLoad");
    laptop.giveWrongType("Watts");
    laptop.giveInfinity("SystemPowerIn");
    EXPECT_EQ(telemetry("SystemLoad"), RegistryScalar());
    EXPECT_EQ(entryOf("AdapterDetails", "Watts"), RegistryScalar(true));
    EXPECT_TRUE(std::isinf(std::get<double>(telemetry("SystemPowerIn"))));
    EXPECT_EQ(telemetry("BatteryPower"), RegistryScalar(std::int64_t{55'000}));
}

} // namespace
} // namespace amperly
