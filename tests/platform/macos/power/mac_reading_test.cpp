// Whole readings, from the kernel's objects to a sample.

#include "platform/macos/power/io_kit_registry.h"
#include "platform/macos/power/io_kit_smc_service.h"
#include "telemetry/power_reader.h"
#include "telemetry/smc.h"
#include "tests/platform/macos/power/fake_machine_test.h"
#include "tests/support/print_sample.h"

#include <cstring>

namespace amperly {
namespace {

class MacReadingTest : public FakeMachineTest {
protected:
    void TearDown() override
    {
        EXPECT_EQ(held(), 0);
        m_reader.reset(); // closes the connection
        FakeMachineTest::TearDown();
    }

    static void addBattery(bool plugged)
    {
        addService("AppleSmartBattery") = {
            {"ExternalConnected", plugged},
            {"AdapterDetails", fake_mac::Dictionary{{"Watts", 96}, {"Name", "96W USB-C Power Adapter"}}},
            {"CurrentCapacity", 81},
            {"Voltage", 12000},
            {"InstantAmperage", std::int64_t{-500}},
        };
    }

    static void addController(std::initializer_list<std::pair<const char*, float>> keys)
    {
        addService("AppleSMC");
        for (const auto& [name, value] : keys) {
            fake_mac::Data bytes(sizeof value);
            std::memcpy(bytes.data(), &value, sizeof value);
            fake_mac::machine().smcKeys[keyCode(name)] = {.type = kFloatTypeCode, .bytes = bytes};
        }
    }

    std::optional<PowerSample> read() { return m_reader->read(); }

private:
    IoKitSmcService m_service;
    IoKitRegistry m_registry;
    std::optional<PowerReader> m_reader{std::in_place, m_service, m_registry};
};

TEST_F(MacReadingTest, ChargingFromTheControllersKeys)
{
    addBattery(true);
    addController({{"PSTR", 12.0F}, {"SBAP", -30.0F}, {"PDTR", 45.0F}});
    EXPECT_EQ(read(),
        (PowerSample{.systemLoad = 12.0,
            .adapterIn = 45.0,
            .battery = 30.0,
            .adapterRating = 96,
            .batteryPercent = 81,
            .externalConnected = true}));
}

TEST_F(MacReadingTest, OnBatteryTheAdaptersRatingIsIgnored)
{
    addBattery(false);
    addController({{"PSTR", 8.0F}, {"SBAP", 8.5F}});
    EXPECT_EQ(read(),
        (PowerSample{.systemLoad = 8.0, .battery = -8.5, .batteryPercent = 81, .externalConnected = false}));
}

TEST_F(MacReadingTest, WithoutControllerTheBatterysTelemetryCounts)
{
    addBattery(true);
    addService("AppleSmartBattery")["PowerTelemetryData"]
        = fake_mac::Dictionary{{"BatteryPower", -7250}, {"SystemPowerIn", 0}, {"AdapterEfficiencyLoss", 91}};
    const std::optional<PowerSample> sample = read();
    ASSERT_TRUE(sample);
    EXPECT_EQ(sample->battery, -7.25);
    EXPECT_EQ(sample->systemLoad, 7.25);
}

TEST_F(MacReadingTest, WithoutTelemetryVoltageAndCurrentCount)
{
    addBattery(false);
    const std::optional<PowerSample> sample = read();
    ASSERT_TRUE(sample);
    EXPECT_EQ(sample->battery, -6.0);
    EXPECT_EQ(sample->systemLoad, 6.0);
}

TEST_F(MacReadingTest, ADesktopComputerReadsItsControllerAlone)
{
    addController({{"PSTR", 25.0F}});
    const std::optional<PowerSample> sample = read();
    ASSERT_TRUE(sample);
    EXPECT_EQ(sample->systemLoad, 25.0);
    EXPECT_EQ(sample->batteryPercent, std::nullopt);
}

TEST_F(MacReadingTest, ARefusedControllerFallsBackToTheRegistryForGood)
{
    addBattery(false);
    addController({{"PSTR", 25.0F}});
    fake_mac::machine().openResult = kIOReturnNotPrivileged;
    EXPECT_EQ(read()->systemLoad, 6.0);
    fake_mac::machine().openResult = kIOReturnSuccess;
    EXPECT_EQ(read()->systemLoad, 6.0);
}

TEST_F(MacReadingTest, NeitherSourceIsNoReading)
{
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(MacReadingTest, AThousandReadingsHoldOneConnection)
{
    addBattery(true);
    addController({{"PSTR", 12.0F}, {"SBAP", -30.0F}, {"PDTR", 45.0F}});
    for (int reading = 0; reading < 1000; ++reading)
        EXPECT_TRUE(read());
    EXPECT_EQ(fake_mac::audit().connections, 1);
}

} // namespace
} // namespace amperly
