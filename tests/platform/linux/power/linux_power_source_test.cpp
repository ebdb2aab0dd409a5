#include "platform/linux/power/linux_power_source.h"

#include "tests/platform/linux/power/fake_files.h"
#include "tests/platform/linux/power/known_flows.h"

#include <cerrno>
#include <gtest/gtest.h>

namespace amperly {
namespace {

constexpr std::optional<double> kUnknown = std::nullopt;

class LinuxPowerSourceTest : public testing::Test {
protected:
    void addBattery(const AttributeList& more, const std::string& name = "BAT0")
    {
        AttributeList attributes{{"type", "Battery"}, {"present", "1"}};
        attributes.insert(attributes.end(), more.begin(), more.end());
        files.addSupply(name, attributes);
    }
    void addDischargingBattery()
    {
        addBattery({{"status", "Discharging"}, {"voltage_now", "11500000"}, {"power_now", "7250000"},
            {"energy_now", "30000000"}, {"energy_full", "60000000"}, {"capacity", "50"}});
    }
    void addMains(const std::string& online)
    {
        files.addSupply("AC", {{"type", "Mains"}, {"online", online}});
    }

    std::optional<PowerSample> read() { return source.read(); }
    int readsOfOneReading()
    {
        files.resetCounts();
        static_cast<void>(read());
        return files.reads();
    }

    FakeFiles files;
    LinuxPowerSource source{files, FakeFiles::kRoot, [] { return 0.0; }};
};

TEST_F(LinuxPowerSourceTest, MachineWithoutAnySupplyHasNoReading)
{
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(LinuxPowerSourceTest, MouseAloneIsNoReading)
{
    files.addSupply("hidpp_battery_0",
        {{"type", "Battery"}, {"scope", "Device"}, {"online", "1"}, {"status", "Discharging"},
            {"capacity", "18"}});
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(LinuxPowerSourceTest, MouseIsNotReadAtEveryTurn)
{
    addMains("1");
    files.addSupply("hidpp_battery_0", {{"type", "Battery"}, {"scope", "Device"}, {"capacity", "18"}});
    static_cast<void>(read());
    EXPECT_EQ(readsOfOneReading(), 1);
}

TEST_F(LinuxPowerSourceTest, EmptyBayAloneIsNoReading)
{
    addBattery({{"status", "Unknown"}, {"capacity", "100"}});
    files.setSupply("BAT0", "present", "0");
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(LinuxPowerSourceTest, PortMayTellItsTypeOnlyWhilePluggedIn)
{
    for (const bool hasUevent : {true, false}) {
        addDischargingBattery();
        files.addSupply("port", {{"type", "Unknown"}, {"online", "0"}});
        if (!hasUevent)
            files.emptyUevent("port");
        EXPECT_FALSE(read()->externalConnected);
        files.setSupply("port", "type", "USB_PD");
        files.setSupply("port", "online", "1");
        if (!hasUevent)
            files.emptyUevent("port");
        EXPECT_TRUE(read()->externalConnected);
    }
}

TEST_F(LinuxPowerSourceTest, SupplyOfAnotherKindIsNotReadAtEveryTurn)
{
    addMains("1");
    files.addSupply("bms", {{"type", "BMS"}, {"capacity", "40"}});
    static_cast<void>(read());
    EXPECT_EQ(readsOfOneReading(), 1);
}

TEST_F(LinuxPowerSourceTest, LoneBatteryOfUnknownStatusTellsNothingOfTheCharger)
{
    addBattery({{"status", "Unknown"}, {"power_now", "9000000"}});
    const std::optional<PowerSample> sample = read();
    ASSERT_TRUE(sample);
    EXPECT_FALSE(sample->externalConnected);
    EXPECT_FALSE(sample->externalKnown);
    EXPECT_EQ(batteryFlow(sample), kUnknown);
}

TEST_F(LinuxPowerSourceTest, SupplyThatIsOfflineTellsOfTheCharger)
{
    addMains("0");
    addBattery({{"status", "Unknown"}, {"power_now", "9000000"}});
    const std::optional<PowerSample> sample = read();
    ASSERT_TRUE(sample);
    EXPECT_FALSE(sample->externalConnected);
    EXPECT_TRUE(sample->externalKnown);
}

TEST_F(LinuxPowerSourceTest, BatteryPutIntoItsBayShowsAtTheNextReading)
{
    addBattery({{"status", "Discharging"}, {"power_now", "5000000"}});
    files.setSupply("BAT0", "present", "0");
    EXPECT_EQ(read(), std::nullopt);
    files.setSupply("BAT0", "present", "1");
    EXPECT_EQ(batteryFlow(read()), -5.0);
}

TEST_F(LinuxPowerSourceTest, DischargingBatteryIsTheWholeStory)
{
    addMains("0");
    addDischargingBattery();
    EXPECT_EQ(read(),
        (PowerSample{.systemLoad = 7.25,
            .adapterIn = 0,
            .battery = -7.25,
            .adapterRating = {},
            .batteryPercent = 50}));
}

TEST_F(LinuxPowerSourceTest, PluggedInOnlyTheBatteryIsKnown)
{
    addMains("1");
    addBattery({{"status", "Charging"}, {"power_now", "20000000"}, {"capacity", "80"}});
    const std::optional<PowerSample> sample = read();
    EXPECT_TRUE(sample->externalConnected);
    EXPECT_EQ(batteryFlow(sample), 20.0);
    EXPECT_EQ(load(sample), kUnknown);
    EXPECT_EQ(adapterIn(sample), kUnknown);
}

TEST_F(LinuxPowerSourceTest, SocketOfADesktopIsAReadingWithoutFigures)
{
    addMains("1");
    const std::optional<PowerSample> sample = read();
    EXPECT_TRUE(sample->externalConnected);
    EXPECT_EQ(sample->batteryPercent, std::nullopt);
    EXPECT_EQ(batteryFlow(sample), kUnknown);
    EXPECT_EQ(load(sample), kUnknown);
}

TEST_F(LinuxPowerSourceTest, StaleGaugeAfterUnpluggingIsUnknownRatherThanNothing)
{
    addMains("0");
    addBattery(
        {{"status", "Full"}, {"current_now", "1000"}, {"voltage_now", "12497000"}, {"capacity", "100"}});
    const std::optional<PowerSample> sample = read();
    EXPECT_EQ(batteryFlow(sample), kUnknown);
    EXPECT_EQ(load(sample), kUnknown);
    EXPECT_EQ(adapterIn(sample), 0.0);
}

TEST_F(LinuxPowerSourceTest, PowerIsRoundedToTheNearestMilliwatt)
{
    addBattery({{"status", "Discharging"}, {"power_now", "5002600"}});
    EXPECT_EQ(batteryFlow(read()), -5.003);
}

TEST_F(LinuxPowerSourceTest, RatingOfAPortIsGivenWhilePluggedIn)
{
    addBattery({{"status", "Not charging"}, {"current_now", "0"}, {"voltage_now", "13292000"}});
    addMains("1");
    files.addSupply("ucsi-source-psy-USBC000:001",
        {{"type", "USB"}, {"online", "1"}, {"voltage_now", "20000000"}, {"current_now", "5000000"}});
    EXPECT_EQ(read()->adapterRating, 100);
    files.emptyUevent("ucsi-source-psy-USBC000:001");
    EXPECT_EQ(read()->adapterRating, 100);
}

TEST_F(LinuxPowerSourceTest, ReadingCostsOneReadForEachSupply)
{
    addMains("0");
    addDischargingBattery();
    static_cast<void>(read());
    for (int turn = 0; turn < 4; ++turn) {
        EXPECT_EQ(readsOfOneReading(), 2);
        EXPECT_EQ(files.opens(), 0);
    }
}

TEST_F(LinuxPowerSourceTest, ClassesAreListedOnceInAWhile)
{
    addMains("0");
    addDischargingBattery();
    static_cast<void>(read());
    const int before = files.lists();
    for (int turn = 0; turn < 30; ++turn)
        static_cast<void>(read());
    EXPECT_LE(files.lists() - before, 6);
}

// Single attributes.

TEST_F(LinuxPowerSourceTest, EmptyUeventIsReplacedByTheFilesThatMatter)
{
    addMains("0");
    addDischargingBattery();
    files.emptyUevent("BAT0");
    EXPECT_EQ(batteryFlow(read()), -7.25);
    EXPECT_EQ(read()->batteryPercent, 50);
    EXPECT_EQ(files.opensOf("class/power_supply/BAT0/energy_now"), 0);
    EXPECT_EQ(files.opensOf("class/power_supply/BAT0/voltage_now"), 0);
}

TEST_F(LinuxPowerSourceTest, EmptyUeventIsAskedEverMoreRarely)
{
    addDischargingBattery();
    files.emptyUevent("BAT0");
    for (int turn = 0; turn < 200; ++turn)
        static_cast<void>(read());
    EXPECT_LE(files.readsOf("class/power_supply/BAT0/uevent"), 10);
    EXPECT_EQ(files.opensOf("class/power_supply/BAT0/power_now"), 1);
}

TEST_F(LinuxPowerSourceTest, UeventThatFailsIsReplacedToo)
{
    addMains("1");
    addDischargingBattery();
    files.failSupply("BAT0", "uevent", EIO);
    files.failSupply("AC", "uevent", EIO);
    EXPECT_EQ(batteryFlow(read()), -7.25);
    EXPECT_TRUE(read()->externalConnected);
}

TEST_F(LinuxPowerSourceTest, SupplyWithoutUeventIsReadFromItsFiles)
{
    addDischargingBattery();
    files.removeDevice("class/power_supply/BAT0/power");
    files.failOpening("class/power_supply/BAT0/uevent", EACCES);
    EXPECT_EQ(batteryFlow(read()), -7.25);
}

TEST_F(LinuxPowerSourceTest, EmptyUeventOfAMouseStillTellsThatItIsOne)
{
    files.addSupply(
        "mouse", {{"type", "Battery"}, {"scope", "Device"}, {"status", "Discharging"}, {"capacity", "18"}});
    files.emptyUevent("mouse");
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(LinuxPowerSourceTest, UeventWithoutTypeIsCompletedByTheFile)
{
    addMains("0");
    addDischargingBattery();
    files.setUevent("BAT0",
        "POWER_SUPPLY_NAME=BAT0\nPOWER_SUPPLY_STATUS=Discharging\nPOWER_SUPPLY_POWER_NOW=3000000\n"
        "POWER_SUPPLY_CAPACITY=40\n");
    files.setUevent("AC", "POWER_SUPPLY_NAME=AC\nPOWER_SUPPLY_ONLINE=0\n");
    EXPECT_EQ(batteryFlow(read()), -3.0);
    EXPECT_EQ(readsOfOneReading(), 2);
}

TEST_F(LinuxPowerSourceTest, UeventWithoutRateIsCompletedByTheFile)
{
    addDischargingBattery();
    files.setUevent(
        "BAT0", "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_STATUS=Discharging\nPOWER_SUPPLY_CAPACITY=40\n");
    EXPECT_EQ(batteryFlow(read()), -7.25);
    EXPECT_EQ(read()->batteryPercent, 40);
}

TEST_F(LinuxPowerSourceTest, RateThatFirmwareDoesNotKnowIsNotAskedForTwiceAtEveryTurn)
{
    addMains("0");
    addBattery({{"status", "Discharging"}, {"voltage_now", "12960000"}, {"capacity", "80"}});
    files.write("class/power_supply/BAT0/current_now", "");
    files.failSupply("BAT0", "current_now", ENODEV);
    for (int turn = 0; turn < 100; ++turn)
        EXPECT_EQ(load(read()), kUnknown);
    EXPECT_LE(files.readsOf("class/power_supply/BAT0/current_now"), 8);

    files.failSupply("BAT0", "current_now", 0);
    files.setSupply("BAT0", "current_now", "1000000");
    EXPECT_EQ(load(read()), 12.96);
}

TEST_F(LinuxPowerSourceTest, AttributesWithoutAValueNowComeBackAtOnce)
{
    addMains("0");
    addDischargingBattery();
    files.emptyUevent("BAT0");
    for (const int error : {ENODEV, ENODATA, EAGAIN}) {
        files.failSupply("BAT0", "power_now", error);
        EXPECT_EQ(load(read()), kUnknown);
        EXPECT_EQ(read()->batteryPercent, 50);
        files.failSupply("BAT0", "power_now", 0);
        EXPECT_EQ(load(read()), 7.25);
    }
}

TEST_F(LinuxPowerSourceTest, AttributesInErrorAreLeftAloneForAWhile)
{
    addMains("0");
    addDischargingBattery();
    files.emptyUevent("BAT0");
    files.failSupply("BAT0", "power_now", EIO);
    for (int turn = 0; turn < 200; ++turn)
        static_cast<void>(read());
    EXPECT_LE(files.readsOf("class/power_supply/BAT0/power_now"), 10);
    EXPECT_EQ(read()->batteryPercent, 50);
}

TEST_F(LinuxPowerSourceTest, BatteriesByFilesAreWeighedByTheirSize)
{
    addBattery({{"status", "Unknown"}, {"power_now", "0"}, {"capacity", "90"}, {"energy_now", "18000000"},
        {"energy_full", "20000000"}});
    addBattery({{"status", "Full"}, {"power_now", "0"}, {"capacity", "20"}, {"energy_now", "16000000"},
                   {"energy_full", "80000000"}},
        "BAT1");
    files.emptyUevent("BAT0");
    files.emptyUevent("BAT1");
    EXPECT_EQ(read()->batteryPercent, 34);
}

TEST_F(LinuxPowerSourceTest, TextThatIsCutShortLosesItsLastLine)
{
    addBattery({{"status", "Discharging"}, {"power_now", "7250000"}});
    std::string text = "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_STATUS=Discharging\nPOWER_SUPPLY_MODEL_NAME=";
    const std::string last = "\nPOWER_SUPPLY_POWER_NOW=72";
    text.append(4096 - text.size() - last.size(), 'x').append(last).append("50000\n");
    files.setUevent("BAT0", text);
    EXPECT_EQ(batteryFlow(read()), -7.25);
}

// Hot-plug.

TEST_F(LinuxPowerSourceTest, AnnouncedBatteryShowsAtOnce)
{
    addMains("1");
    EXPECT_EQ(read()->batteryPercent, std::nullopt);
    addDischargingBattery();
    files.announceChange();
    EXPECT_EQ(read()->batteryPercent, 50);
}

TEST_F(LinuxPowerSourceTest, UnannouncedBatteryShowsWithinFiveReadings)
{
    EXPECT_EQ(read(), std::nullopt);
    addDischargingBattery();
    for (int turn = 0; turn < 4; ++turn)
        static_cast<void>(read());
    EXPECT_EQ(read()->batteryPercent, 50);
}

TEST_F(LinuxPowerSourceTest, RemovedBatteryIsGoneAtOnce)
{
    addMains("1");
    addDischargingBattery();
    EXPECT_EQ(read()->batteryPercent, 50);
    files.removeSupply("BAT0");
    EXPECT_EQ(read()->batteryPercent, std::nullopt);
    EXPECT_TRUE(read()->externalConnected);
    EXPECT_EQ(readsOfOneReading(), 1);
}

TEST_F(LinuxPowerSourceTest, RemovedBatteryWhoseUeventIsEmptyIsGoneAtOnce)
{
    addMains("1");
    addDischargingBattery();
    files.emptyUevent("BAT0");
    EXPECT_EQ(read()->batteryPercent, 50);
    files.removeSupply("BAT0");
    EXPECT_EQ(read()->batteryPercent, std::nullopt);
}

TEST_F(LinuxPowerSourceTest, BatteryPluggedOutAndInAgainIsReadAnew)
{
    addDischargingBattery();
    EXPECT_EQ(read()->batteryPercent, 50);
    files.removeSupply("BAT0");
    addDischargingBattery();
    files.setSupply("BAT0", "capacity", "70");
    EXPECT_EQ(read()->batteryPercent, 70);
}

TEST_F(LinuxPowerSourceTest, LastSupplyMayGoAndComeBack)
{
    addDischargingBattery();
    EXPECT_TRUE(read());
    files.removeSupply("BAT0");
    EXPECT_EQ(read(), std::nullopt);
    addDischargingBattery();
    for (int turn = 0; turn < 5; ++turn)
        static_cast<void>(read());
    EXPECT_EQ(read()->batteryPercent, 50);
}

TEST_F(LinuxPowerSourceTest, DeadSupplyThatStaysListedIsNotOpenedAtEveryTurn)
{
    addMains("1");
    addDischargingBattery();
    static_cast<void>(read());
    files.failSupply("BAT0", "uevent", ENODEV);
    files.failSupply("BAT0", "power_now", ENODEV);
    for (int turn = 0; turn < 200; ++turn)
        static_cast<void>(read());
    EXPECT_LE(files.opensOf("class/power_supply/BAT0/uevent"), 12);
    EXPECT_TRUE(read()->externalConnected);
}

TEST_F(LinuxPowerSourceTest, HandlesAreGivenBackAtTheEnd)
{
    addMains("1");
    addDischargingBattery();
    files.emptyUevent("BAT0");
    {
        LinuxPowerSource other(files, FakeFiles::kRoot, [] { return 0.0; });
        static_cast<void>(other.read());
        EXPECT_GT(files.openHandles(), 0);
    }
    EXPECT_EQ(files.openHandles(), 0);
}

} // namespace
} // namespace amperly
