// What a reading costs once everything is open. It has a program to itself because it counts
// what the whole program takes from the heap.

#include "platform/linux/power/linux_power_source.h"
#include "platform/linux/power/posix_files.h"
#include "tests/platform/linux/power/known_flows.h"
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
            m_last = source.read();
        const AllocationCount count;
        for (int turn = 0; turn < readings; ++turn)
            m_last = source.read();
        return count.value();
    }

    void expectEveryFigure() const
    {
        ASSERT_TRUE(m_last);
        EXPECT_EQ(load(m_last), 15.0);
        EXPECT_EQ(adapterIn(m_last), 32.0);
        EXPECT_EQ(batteryFlow(m_last), 17.0);
        EXPECT_EQ(m_last->adapterRating, 100);
        EXPECT_EQ(m_last->batteryPercent, 75);
        EXPECT_TRUE(m_last->externalConnected);
    }

    SysfsFolder folder;
    PosixFiles files;
    LinuxPowerSource source{files, folder.root()};

private:
    std::optional<PowerSample> m_last;
};

TEST_F(SteadyReadingTest, TakesNothingFromTheHeap)
{
    EXPECT_EQ(allocationsIn(100), 0);
    expectEveryFigure();
}

TEST_F(SteadyReadingTest, TakesNothingFromTheHeapByFilesEither)
{
    for (const char* name : {"AC", "BAT0", "ucsi-source-psy-USBC000:001"})
        folder.write(std::string("class/power_supply/") + name + "/uevent", "");
    EXPECT_EQ(allocationsIn(100), 0);
    expectEveryFigure();
}

TEST_F(SteadyReadingTest, TakesNothingFromTheHeapForUnknownFlows)
{
    std::filesystem::remove_all(folder.root() + "/class/hwmon");
    folder.write("class/power_supply/BAT0/uevent", "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_STATUS=Full\n");
    EXPECT_EQ(allocationsIn(100), 0);
}

} // namespace
} // namespace amperly
