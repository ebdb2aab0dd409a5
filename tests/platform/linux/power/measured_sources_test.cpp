#include "platform/linux/power/measured_sources.h"

#include "platform/linux/power/linux_power_source.h"
#include "tests/platform/linux/power/fake_files.h"
#include "tests/platform/linux/power/known_flows.h"

#include <cerrno>
#include <gtest/gtest.h>

namespace amperly {
namespace {

constexpr std::optional<double> kUnknown = std::nullopt;

class MeasuredSourcesTest : public testing::Test {
protected:
    void addController(const std::string& load, const std::string& adapterIn)
    {
        files.addDevice("hwmon", "hwmon3",
            {{"name", "macsmc_hwmon"}, {"power1_label", "AC Input Power"}, {"power1_input", adapterIn},
                {"power2_label", "3.8 V Rail Power"}, {"power2_input", "1000000"},
                {"power3_label", "Total System Power"}, {"power3_input", load}});
    }
    void addPowerMeter(const std::string& name, const std::string& microwatts)
    {
        files.addDevice("hwmon", name, {{"name", "power_meter"}, {"power1_average", microwatts}});
    }
    void addPlatformMeter(const std::string& microjoules)
    {
        files.addDevice("powercap", "intel-rapl:0",
            {{"name", "package-0"}, {"energy_uj", "1"}, {"max_energy_range_uj", "1000000000"}});
        files.addDevice("powercap", "intel-rapl:1",
            {{"name", "psys"}, {"energy_uj", microjoules}, {"max_energy_range_uj", "1000000000"}});
    }
    void addCharging(const std::string& microwatts)
    {
        files.addSupply("AC", {{"type", "Mains"}, {"online", "1"}});
        files.addSupply("BAT0", {{"type", "Battery"}, {"status", "Charging"}, {"power_now", microwatts}});
    }

    std::optional<PowerSample> read() { return source.read(); }
    std::optional<PowerSample> readAfter(double seconds)
    {
        now += seconds;
        return read();
    }

    FakeFiles files;
    double now = 1000;
    LinuxPowerSource source{files, FakeFiles::kRoot, [this] { return now; }};
};

TEST_F(MeasuredSourcesTest, ControllerTellsLoadAndAdapterByLabel)
{
    addCharging("20000000");
    addController("15500000", "36000000");
    const std::optional<PowerSample> sample = read();
    EXPECT_EQ(load(sample), 15.5);
    EXPECT_EQ(adapterIn(sample), 36.0);
    EXPECT_EQ(batteryFlow(sample), 20.0);
}

TEST_F(MeasuredSourcesTest, MeterAloneIsAReading)
{
    addPowerMeter("hwmon0", "80000000");
    const std::optional<PowerSample> sample = read();
    EXPECT_EQ(load(sample), 80.0);
    EXPECT_EQ(adapterIn(sample), 80.0);
    EXPECT_EQ(batteryFlow(sample), kUnknown);
    EXPECT_TRUE(sample->externalConnected);
}

TEST_F(MeasuredSourcesTest, OneMeterAndTheBatteryTellTheAdapter)
{
    addCharging("20000000");
    addPowerMeter("hwmon0", "15000000");
    EXPECT_EQ(adapterIn(read()), 35.0);
}

TEST_F(MeasuredSourcesTest, ErrorCodeOfAPowerMeterIsUnknown)
{
    addPowerMeter("hwmon0", "4294967295000");
    EXPECT_EQ(load(read()), kUnknown);
}

TEST_F(MeasuredSourcesTest, MeterThatSaysNothingOrLessIsUnknown)
{
    for (const char* microwatts : {"0", "-3000000", "lots"}) {
        addPowerMeter("hwmon0", microwatts);
        EXPECT_EQ(load(read()), kUnknown) << microwatts;
    }
}

TEST_F(MeasuredSourcesTest, MeterOfTheBatteryIsNoMeterOfTheSystem)
{
    files.addDevice("hwmon", "hwmon0",
        {{"name", "power_meter"}, {"power1_is_battery", "1"}, {"power1_average", "9000000"}});
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(MeasuredSourcesTest, TwoPowerMetersAreNobodysWhole)
{
    addPowerMeter("hwmon0", "80000000");
    addPowerMeter("hwmon1", "30000000");
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(MeasuredSourcesTest, SupplyUnitOfADesktopTellsItsTotal)
{
    files.addDevice("hwmon", "hwmon5",
        {{"name", "corsairpsu"}, {"power1_label", "power total"}, {"power1_input", "120000000"},
            {"power2_label", "power +12v"}, {"power2_input", "90000000"}});
    addPowerMeter("hwmon0", "80000000");
    EXPECT_EQ(load(read()), 120.0);
}

TEST_F(MeasuredSourcesTest, PowerOfAGraphicsCardIsNotTheSystems)
{
    files.addDevice(
        "hwmon", "hwmon1", {{"name", "amdgpu"}, {"power1_label", "PPT"}, {"power1_average", "30000000"}});
    files.addDevice("hwmon", "hwmon2", {{"name", "BAT0"}, {"power1_input", "9000000"}});
    files.addDevice(
        "hwmon", "hwmon3", {{"name", "ucsi_source_psy_USBC000:001"}, {"power1_input", "60000000"}});
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(MeasuredSourcesTest, PlatformMeterTellsPowerFromTheSecondReadingOn)
{
    addCharging("20000000");
    addPlatformMeter("5000000");
    EXPECT_EQ(load(read()), kUnknown);
    files.write("class/powercap/intel-rapl:1/energy_uj", "35000000\n");
    const std::optional<PowerSample> sample = readAfter(2);
    EXPECT_EQ(load(sample), 15.0);
    EXPECT_EQ(adapterIn(sample), 35.0);
}

TEST_F(MeasuredSourcesTest, PlatformMeterThatMayNotBeReadIsNeverAskedAgain)
{
    addPlatformMeter("5000000");
    files.failOpening("class/powercap/intel-rapl:1/energy_uj", EACCES);
    for (int turn = 0; turn < 100; ++turn)
        EXPECT_EQ(readAfter(2), std::nullopt);
    EXPECT_EQ(files.opensOf("class/powercap/intel-rapl:1/energy_uj"), 1);
}

TEST_F(MeasuredSourcesTest, PowerOfTheProcessorPackageIsNotTheSystems)
{
    files.addDevice("powercap", "intel-rapl:0",
        {{"name", "package-0"}, {"energy_uj", "1"}, {"max_energy_range_uj", "1000000000"}});
    EXPECT_EQ(read(), std::nullopt);
    EXPECT_EQ(files.readsOf("class/powercap/intel-rapl:0/energy_uj"), 0);
}

TEST_F(MeasuredSourcesTest, ControllerIsTrustedMoreThanThePlatformMeter)
{
    addController("15500000", "36000000");
    addPlatformMeter("5000000");
    static_cast<void>(read());
    files.write("class/powercap/intel-rapl:1/energy_uj", "95000000\n");
    EXPECT_EQ(load(readAfter(2)), 15.5);
}

TEST_F(MeasuredSourcesTest, MeterWhoseDriverLoadsLaterIsFound)
{
    files.addSupply("AC", {{"type", "Mains"}, {"online", "1"}});
    EXPECT_EQ(load(read()), kUnknown);
    addPowerMeter("hwmon0", "80000000");
    for (int turn = 0; turn < 15; ++turn)
        static_cast<void>(read());
    EXPECT_EQ(load(read()), 80.0);
}

TEST_F(MeasuredSourcesTest, MeterThatGoesLeavesItsFigureUnknown)
{
    files.addSupply("AC", {{"type", "Mains"}, {"online", "1"}});
    addPowerMeter("hwmon0", "80000000");
    EXPECT_EQ(load(read()), 80.0);
    files.removeDevice("class/hwmon/hwmon0");
    EXPECT_EQ(load(read()), kUnknown);
    files.announceChange();
    EXPECT_EQ(load(read()), kUnknown);
}

TEST_F(MeasuredSourcesTest, LabelsAreReadOnceOnly)
{
    addController("15500000", "36000000");
    static_cast<void>(read());
    files.resetCounts();
    static_cast<void>(read());
    EXPECT_EQ(files.reads(), 2);
    EXPECT_EQ(files.opens(), 0);
}

} // namespace
} // namespace amperly
