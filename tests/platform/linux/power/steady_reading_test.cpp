// What a reading costs once everything is open. It has a program to itself because it counts
// what the whole program takes from the heap.

#include "platform/battery_entry.h"
#include "tests/platform/linux/power/reading_of.h"
#include "tests/platform/linux/power/sysfs_folder.h"
#include "tests/support/allocation_count.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

class SteadyReadingTest : public testing::Test {
protected:
    SteadyReadingTest()
    {
        folder.addSupply("AC", {{"type", "Mains"}, {"online", "1"}});
        folder.addSupply("ucsi-source-psy-USBC000:001",
            {{"type", "USB"}, {"online", "1"}, {"voltage_now", "20000000"}, {"current_now", "5000000"}});
        folder.addSupply("BAT0",
            {{"type", "Battery"}, {"status", "Charging"}, {"voltage_now", "17000000"},
                {"current_now", "1000000"}, {"charge_now", "3000000"}, {"charge_full", "4000000"},
                {"capacity", "75"}});
        folder.addDevice("class/hwmon/hwmon0", {{"name", "power_meter"}, {"power1_average", "15000000"}});
    }

    long allocationsIn(int readings)
    {
        for (int turn = 0; turn < 20; ++turn)
            readAll();
        const AllocationCount count;
        for (int turn = 0; turn < readings; ++turn)
            readAll();
        return count.value();
    }

    void readAll()
    {
        const RegistryEntry entry = registry.find(battery_entry::kClassName);
        for (const std::string_view name : {battery_entry::kExternalConnected, battery_entry::kAdapterDetails,
                 battery_entry::kCurrentCapacity, battery_entry::kPowerTelemetryData, battery_entry::kVoltage,
                 battery_entry::kInstantAmperage})
            m_found += registry.copyProperty(entry, name).index() != 0;
        registry.release(entry);
    }

    SysfsFolder folder;
    LinuxRegistry registry{folder.root()};
    int m_found = 0;
};

TEST_F(SteadyReadingTest, TakesNothingFromTheHeap)
{
    EXPECT_EQ(allocationsIn(100), 0);
    EXPECT_EQ(m_found, 120 * 6);
}

TEST_F(SteadyReadingTest, TakesNothingFromTheHeapByFilesEither)
{
    for (const char* name : {"AC", "BAT0", "ucsi-source-psy-USBC000:001"})
        folder.write(std::string("class/power_supply/") + name + "/uevent", "");
    EXPECT_EQ(allocationsIn(100), 0);
    EXPECT_EQ(m_found, 120 * 6);
}

TEST_F(SteadyReadingTest, TakesNothingFromTheHeapForUnknownFlows)
{
    std::filesystem::remove_all(folder.root() + "/class/hwmon");
    folder.write("class/power_supply/BAT0/uevent", "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_STATUS=Full\n");
    EXPECT_EQ(allocationsIn(100), 0);
}

} // namespace
} // namespace amperly
