#include "platform/linux/power/power_meters.h"

#include "platform/linux/power/linux_power_source.h"
#include "tests/platform/linux/power/fake_files.h"
#include "tests/platform/linux/power/known_flows.h"

#include <cerrno>
#include <gtest/gtest.h>

namespace amperly {
namespace {

constexpr std::optional<double> kUnknown = std::nullopt;

class PowerMetersTest : public testing::Test {
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

TEST_F(PowerMetersTest, ControllerTellsLoadAndAdapterByLabel)
{
    addCharging("20000000");
    addController("15500000", "36000000");
    const std::optional<PowerSample> sample = read();
    EXPECT_EQ(load(sample), 15.5);
    EXPECT_EQ(adapterIn(sample), 36.0);
    EXPECT_EQ(batteryFlow(sample), 20.0);
}

TEST_F(PowerMetersTest, MeterAloneIsAReading)
{
    addPowerMeter("hwmon0", "80000000");
    const std::optional<PowerSample> sample = read();
    EXPECT_EQ(load(sample), 80.0);
    EXPECT_EQ(adapterIn(sample), 80.0);
    EXPECT_EQ(batteryFlow(sample), kUnknown);
    EXPECT_TRUE(sample->externalConnected);
}

TEST_F(PowerMetersTest, OneMeterAndTheBatteryTellTheAdapter)
{
    addCharging("20000000");
    addPowerMeter("hwmon0", "15000000");
    EXPECT_EQ(adapterIn(read()), 35.0);
}

TEST_F(PowerMetersTest, ErrorCodeOfAPowerMeterIsUnknown)
{
    addPowerMeter("hwmon0", "4294967295000");
    EXPECT_EQ(load(read()), kUnknown);
}

TEST_F(PowerMetersTest, MeterThatSaysNothingOrLessIsUnknown)
{
    for (const char* microwatts : {"0", "-3000000", "lots"}) {
        addPowerMeter("hwmon0", microwatts);
        EXPECT_EQ(load(read()), kUnknown) << microwatts;
    }
}

TEST_F(PowerMetersTest, MeterOfTheBatteryIsNoMeterOfTheSystem)
{
    files.addDevice("hwmon", "hwmon0",
        {{"name", "power_meter"}, {"power1_is_battery", "1"}, {"power1_average", "9000000"}});
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(PowerMetersTest, TwoPowerMetersAreNobodysWhole)
{
    addPowerMeter("hwmon0", "80000000");
    addPowerMeter("hwmon1", "30000000");
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(PowerMetersTest, SupplyUnitOfADesktopTellsItsTotal)
{
    files.addDevice("hwmon", "hwmon5",
        {{"name", "corsairpsu"}, {"power1_label", "power total"}, {"power1_input", "120000000"},
            {"power2_label", "power +12v"}, {"power2_input", "90000000"}});
    addPowerMeter("hwmon0", "80000000");
    EXPECT_EQ(load(read()), 120.0);
}

TEST_F(PowerMetersTest, PowerOfAGraphicsCardIsNotTheSystems)
{
    files.addDevice(
        "hwmon", "hwmon1", {{"name", "amdgpu"}, {"power1_label", "PPT"}, {"power1_average", "30000000"}});
    files.addDevice("hwmon", "hwmon2", {{"name", "BAT0"}, {"power1_input", "9000000"}});
    files.addDevice(
        "hwmon", "hwmon3", {{"name", "ucsi_source_psy_USBC000:001"}, {"power1_input", "60000000"}});
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(PowerMetersTest, PlatformMeterTellsPowerFromTheSecondReadingOn)
{
    addCharging("20000000");
    addPlatformMeter("5000000");
    EXPECT_EQ(load(read()), kUnknown);
    files.write("class/powercap/intel-rapl:1/energy_uj", "35000000\n");
    const std::optional<PowerSample> sample = readAfter(2);
    EXPECT_EQ(load(sample), 15.0);
    EXPECT_EQ(adapterIn(sample), 35.0);
}

TEST_F(PowerMetersTest, PlatformMeterThatMayNotBeReadIsNeverAskedAgain)
{
    addPlatformMeter("5000000");
    files.failOpening("class/powercap/intel-rapl:1/energy_uj", EACCES);
    for (int turn = 0; turn < 100; ++turn)
        EXPECT_EQ(readAfter(2), std::nullopt);
    EXPECT_EQ(files.opensOf("class/powercap/intel-rapl:1/energy_uj"), 1);
}

TEST_F(PowerMetersTest, PowerOfTheProcessorPackageIsNotTheSystems)
{
    files.addDevice("powercap", "intel-rapl:0",
        {{"name", "package-0"}, {"energy_uj", "1"}, {"max_energy_range_uj", "1000000000"}});
    EXPECT_EQ(read(), std::nullopt);
    EXPECT_EQ(files.readsOf("class/powercap/intel-rapl:0/energy_uj"), 0);
}

TEST_F(PowerMetersTest, ControllerIsTrustedMoreThanThePlatformMeter)
{
    addController("15500000", "36000000");
    addPlatformMeter("5000000");
    static_cast<void>(read());
    files.write("class/powercap/intel-rapl:1/energy_uj", "95000000\n");
    EXPECT_EQ(load(readAfter(2)), 15.5);
}

TEST_F(PowerMetersTest, MeterWhoseDriverLoadsLaterIsFound)
{
    files.addSupply("AC", {{"type", "Mains"}, {"online", "1"}});
    EXPECT_EQ(load(read()), kUnknown);
    addPowerMeter("hwmon0", "80000000");
    for (int turn = 0; turn < 15; ++turn)
        static_cast<void>(read());
    EXPECT_EQ(load(read()), 80.0);
}

TEST_F(PowerMetersTest, MeterThatGoesLeavesItsFigureUnknown)
{
    files.addSupply("AC", {{"type", "Mains"}, {"online", "1"}});
    addPowerMeter("hwmon0", "80000000");
    EXPECT_EQ(load(read()), 80.0);
    files.removeDevice("class/hwmon/hwmon0");
    EXPECT_EQ(load(read()), kUnknown);
    files.announceChange();
    EXPECT_EQ(load(read()), kUnknown);
}

TEST_F(PowerMetersTest, LabelsAreReadOnceOnly)
{
    addController("15500000", "36000000");
    static_cast<void>(read());
    files.resetCounts();
    static_cast<void>(read());
    EXPECT_EQ(files.reads(), 2);
    EXPECT_EQ(files.opens(), 0);
}

// The counter of energy.

TEST(EnergyCounterTest, FirstPointIsNoPower)
{
    EnergyCounter counter(1'000'000'000);
    EXPECT_EQ(counter.watts(5'000'000, 100), std::nullopt);
}

TEST(EnergyCounterTest, PowerIsTheMeanBetweenTwoPoints)
{
    EnergyCounter counter(1'000'000'000);
    static_cast<void>(counter.watts(5'000'000, 100));
    EXPECT_EQ(counter.watts(35'000'000, 102), 15.0);
    EXPECT_EQ(counter.watts(36'000'000, 104), 0.5);
}

TEST(EnergyCounterTest, CounterThatStartedAgainGoesOn)
{
    EnergyCounter counter(100'000'000);
    static_cast<void>(counter.watts(95'000'000, 100));
    EXPECT_EQ(counter.watts(5'000'000, 102), 5.0);
}

TEST(EnergyCounterTest, CounterThatWentBackWithoutKnownRangeIsUnknownOnce)
{
    EnergyCounter counter;
    static_cast<void>(counter.watts(95'000'000, 100));
    EXPECT_EQ(counter.watts(5'000'000, 102), std::nullopt);
    EXPECT_EQ(counter.watts(15'000'000, 104), 5.0);
}

TEST(EnergyCounterTest, CounterThatStandsStillIsUnknown)
{
    EnergyCounter counter(100'000'000);
    static_cast<void>(counter.watts(0, 100));
    EXPECT_EQ(counter.watts(0, 102), std::nullopt);
}

TEST(EnergyCounterTest, TwoReadingsAtOnceShareOneFigure)
{
    EnergyCounter counter(100'000'000);
    static_cast<void>(counter.watts(0, 100));
    EXPECT_EQ(counter.watts(20'000'000, 102), 10.0);
    EXPECT_EQ(counter.watts(20'500'000, 102.01), 10.0);
    EXPECT_EQ(counter.watts(60'000'000, 104), 20.0);
}

TEST(EnergyCounterTest, LongPauseStartsAnew)
{
    EnergyCounter counter(100'000'000);
    static_cast<void>(counter.watts(0, 100));
    EXPECT_EQ(counter.watts(50'000'000, 221), std::nullopt);
    EXPECT_EQ(counter.watts(60'000'000, 223), 5.0);
}

} // namespace
} // namespace amperly
