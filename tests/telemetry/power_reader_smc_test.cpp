// Readings that come from the controller, and when it is opened.

#include "platform/battery_entry.h"
#include "telemetry/power_reader.h"
#include "tests/support/print_sample.h"
#include "tests/telemetry/canned_registry.h"
#include "tests/telemetry/canned_smc.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <latch>
#include <limits>
#include <thread>

namespace amperly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PowerReaderSmcTest : public testing::Test {
protected:
    void SetUp() override
    {
        controller.refuse("SBAP");
        controller.refuse("PDTR");
    }

    void plugIn() { registry.set(battery_entry::kExternalConnected, true); }

    /// The sample, which there must be.
    PowerSample read()
    {
        const std::optional<PowerSample> sample = reader.read();
        EXPECT_TRUE(sample.has_value());
        return sample.value_or(PowerSample{});
    }

    void hold(const char (&name)[5], float watts)
    {
        controller.hold(name, watts);
        controller.key(name).information.reply[CannedSmc::kResultOffset] = 0;
    }

    CannedSmc controller;
    CannedRegistry registry;
    PowerReader reader{controller, registry};
};

TEST_F(PowerReaderSmcTest, ChargingOnPowerAllThreeFiguresAreMeasured)
{
    plugIn();
    hold("PSTR", 12.0f);
    hold("SBAP", -30.0f);
    hold("PDTR", 45.0f);
    EXPECT_EQ(read(), (PowerSample{12.0, 45.0, 30.0, {}, {}, true}));
}

TEST_F(PowerReaderSmcTest, WithoutABatteryFigureItIsWhatTheLoadLeavesOfTheAdapter)
{
    plugIn();
    hold("PSTR", 12.0f);
    hold("PDTR", 45.0f);
    EXPECT_EQ(read(), (PowerSample{12.0, 45.0, 33.0, {}, {}, true}));
}

TEST_F(PowerReaderSmcTest, OnPowerWithTheLoadAloneTheAdapterCarriesIt)
{
    plugIn();
    hold("PSTR", 12.0f);
    EXPECT_EQ(read(), (PowerSample{12.0, 12.0, 0.0, {}, {}, true}));
}

TEST_F(PowerReaderSmcTest, WithoutAnAdapterFigureItIsWhatTheBatteryLeavesOfTheLoad)
{
    plugIn();
    hold("PSTR", 12.0f);
    hold("SBAP", 8.0f);
    EXPECT_EQ(read(), (PowerSample{12.0, 4.0, -8.0, {}, {}, true}));
}

TEST_F(PowerReaderSmcTest, AdapterWorkedOutBelowZeroIsZero)
{
    plugIn();
    hold("PSTR", 12.0f);
    hold("SBAP", 20.0f);
    EXPECT_EQ(read(), (PowerSample{12.0, 0.0, -20.0, {}, {}, true}));
}

TEST_F(PowerReaderSmcTest, OnBatteryWithoutItsFigureTheWholeLoadDrainsIt)
{
    hold("PSTR", 15.0f);
    EXPECT_EQ(read(), (PowerSample{15.0, 0.0, -15.0, {}, {}, false}));
}

TEST_F(PowerReaderSmcTest, OnBatteryItsOwnFigureIsTaken)
{
    hold("PSTR", 15.0f);
    hold("SBAP", 16.5f);
    EXPECT_EQ(read(), (PowerSample{15.0, 0.0, -16.5, {}, {}, false}));
}

TEST_F(PowerReaderSmcTest, NegativeLoadIsZero)
{
    hold("PSTR", -0.5f);
    EXPECT_EQ(read().systemLoad, 0.0);
}

TEST_F(PowerReaderSmcTest, NegativeLoadStillCountsAsItIsWhereOthersAreWorkedOutFromIt)
{
    plugIn();
    hold("PSTR", -0.5f);
    hold("PDTR", 2.0f);
    EXPECT_EQ(read(), (PowerSample{0.0, 2.0, 2.5, {}, {}, true}));
}

TEST_F(PowerReaderSmcTest, NegativeAdapterIsZeroButTheBatteryIsWorkedOutFromItAsItIs)
{
    plugIn();
    hold("PSTR", 10.0f);
    hold("PDTR", -2.0f);
    EXPECT_EQ(read(), (PowerSample{10.0, 0.0, -12.0, {}, {}, true}));
}

TEST_F(PowerReaderSmcTest, KeysAreReadInOrderAndTheAdapterLast)
{
    plugIn();
    hold("PSTR", 12.0f);
    hold("SBAP", -30.0f);
    hold("PDTR", 45.0f);
    read();
    controller.calls.clear();
    read();
    EXPECT_THAT(controller.conversation(), ElementsAre("PSTR", "SBAP", "PDTR"));
}

TEST_F(PowerReaderSmcTest, OnBatteryTheAdapterIsNotAsked)
{
    hold("PSTR", 12.0f);
    hold("SBAP", 12.0f);
    hold("PDTR", 45.0f);
    EXPECT_EQ(read().adapterIn, 0.0);
    EXPECT_THAT(controller.conversation(), ElementsAre("PSTR?", "PSTR", "SBAP?", "SBAP"));
}

TEST_F(PowerReaderSmcTest, MissingKeysCostOneCallInTheWholeRun)
{
    plugIn();
    hold("PSTR", 12.0f);
    read();
    EXPECT_THAT(controller.conversation(), ElementsAre("PSTR?", "PSTR", "SBAP?", "PDTR?"));
    controller.calls.clear();
    read();
    EXPECT_THAT(controller.conversation(), ElementsAre("PSTR"));
}

TEST_F(PowerReaderSmcTest, ThreePropertiesAreCopiedFromOneEntryThatIsGivenBack)
{
    plugIn();
    hold("PSTR", 12.0f);
    read();
    EXPECT_THAT(registry.foundClasses, ElementsAre("AppleSmartBattery"));
    EXPECT_THAT(registry.copiedNames, ElementsAre("ExternalConnected", "AdapterDetails", "CurrentCapacity"));
    EXPECT_THAT(registry.releasedEntries, ElementsAre(CannedRegistry::kEntry));
    EXPECT_FALSE(registry.copiedFromElsewhere);
}

TEST_F(PowerReaderSmcTest, WithoutABatteryEntryTheControllerAloneGivesAReading)
{
    registry.present = false;
    registry.set(battery_entry::kExternalConnected, true);
    registry.set(battery_entry::kCurrentCapacity, std::int64_t{80});
    hold("PSTR", 20.0f);
    EXPECT_EQ(read(), (PowerSample{20.0, 0.0, -20.0, {}, {}, false}));
    EXPECT_THAT(registry.foundClasses, ElementsAre("AppleSmartBattery"));
    EXPECT_THAT(registry.copiedNames, IsEmpty());
    EXPECT_THAT(registry.releasedEntries, IsEmpty());
}

TEST_F(PowerReaderSmcTest, RatingAndPercentAccompanyTheControllersFigures)
{
    plugIn();
    registry.set(battery_entry::kAdapterDetails, dictionary({{"Watts", std::int64_t{67}}}));
    registry.set(battery_entry::kCurrentCapacity, std::int64_t{42});
    hold("PSTR", 12.0f);
    EXPECT_EQ(read(), (PowerSample{12.0, 12.0, 0.0, 67, 42, true}));
}

TEST_F(PowerReaderSmcTest, TelemetryIsNotConsultedWhereTheControllerAnswers)
{
    registry.set(battery_entry::kPowerTelemetryData, dictionary({{"SystemLoad", std::int64_t{99'000}}}));
    hold("PSTR", 12.0f);
    EXPECT_EQ(read().systemLoad, 12.0);
}

TEST_F(PowerReaderSmcTest, FailedSystemPowerSendsThisReadingToTheRegistryAndTheNextOneBack)
{
    hold("PSTR", 12.0f);
    controller.refuseValue("PSTR");
    registry.set(battery_entry::kPowerTelemetryData, dictionary({{"SystemLoad", std::int64_t{7250}}}));
    EXPECT_EQ(read().systemLoad, 7.25);
    EXPECT_EQ(registry.copiedNames.size(), 6u);
    controller.allowValue("PSTR");
    EXPECT_EQ(read().systemLoad, 12.0);
    EXPECT_EQ(registry.copiedNames.size(), 6u + 3u);
}

TEST_F(PowerReaderSmcTest, MissingSystemPowerSendsEveryReadingToTheRegistryAndNoOtherKeyIsAsked)
{
    controller.refuse("PSTR");
    hold("SBAP", 5.0f);
    EXPECT_EQ(read(), PowerSample{});
    EXPECT_EQ(read(), PowerSample{});
    EXPECT_THAT(controller.conversation(), ElementsAre("PSTR?"));
}

TEST_F(PowerReaderSmcTest, InfiniteSystemPowerWithoutABatteryEntryIsNoReading)
{
    registry.present = false;
    hold("PSTR", std::numeric_limits<float>::infinity());
    EXPECT_EQ(reader.read(), std::nullopt);
}

class PowerReaderLifeTest : public testing::Test {
protected:
    CannedSmc controller;
    CannedRegistry registry;
};

TEST_F(PowerReaderLifeTest, ControllerIsOpenedByTheFirstReadingAndOnlyOnce)
{
    controller.hold("PSTR", 12.0f);
    PowerReader reader(controller, registry);
    EXPECT_THAT(controller.openedClasses, IsEmpty());
    EXPECT_TRUE(reader.read());
    EXPECT_TRUE(reader.read());
    EXPECT_THAT(controller.openedClasses, ElementsAre("AppleSMC"));
    EXPECT_THAT(controller.closedConnections, IsEmpty());
}

TEST_F(PowerReaderLifeTest, ReadingOnAnotherThreadWaitsUntilTheControllerIsOpened)
{
    struct SlowController : CannedSmc {
        SmcOpening open(std::string_view className) override
        {
            begun.count_down();
            bothRead.wait();
            // Time enough for one who does not wait to be back.
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            isDone = true;
            static_cast<void>(CannedSmc::open(className));
            return {};
        }
        std::latch begun{1};
        std::latch bothRead{2};
        std::atomic<bool> isDone = false;
    };
    struct WatchedRegistry : Registry {
        explicit WatchedRegistry(SlowController& smc) : controller(smc) { }
        RegistryEntry find(std::string_view) override
        {
            controller.bothRead.count_down();
            return 0;
        }
        RegistryProperty copyProperty(RegistryEntry, std::string_view) override { return {}; }
        void release(RegistryEntry) override { }
        SlowController& controller;
    };
    SlowController slow;
    WatchedRegistry watched(slow);
    PowerReader reader(slow, watched);
    std::thread first([&reader] { EXPECT_FALSE(reader.read()); });
    slow.begun.wait();
    EXPECT_FALSE(reader.read());
    EXPECT_TRUE(slow.isDone);
    first.join();
    EXPECT_THAT(slow.openedClasses, ElementsAre("AppleSMC"));
}

TEST_F(PowerReaderLifeTest, ControllerThatRefusedIsNotTriedAgain)
{
    controller.opening = {};
    controller.hold("PSTR", 12.0f);
    PowerReader reader(controller, registry);
    EXPECT_TRUE(reader.read());
    controller.opening = {.opened = true, .connection = CannedSmc::kConnection};
    EXPECT_EQ(reader.read(), PowerSample{});
    EXPECT_THAT(controller.openedClasses, ElementsAre("AppleSMC"));
    EXPECT_THAT(controller.closedConnections, ElementsAre(0u));
    EXPECT_THAT(controller.calls, IsEmpty());
}

TEST_F(PowerReaderLifeTest, BatteryEntryIsLookedUpBeforeTheControllerIsOpened)
{
    struct OrderedRegistry : CannedRegistry {
        explicit OrderedRegistry(const CannedSmc& smc) : controller(smc) { }
        RegistryEntry find(std::string_view className) override
        {
            openingsSoFar = controller.openedClasses.size();
            return CannedRegistry::find(className);
        }
        const CannedSmc& controller;
        std::size_t openingsSoFar = 99;
    };
    OrderedRegistry ordered(controller);
    PowerReader reader(controller, ordered);
    EXPECT_TRUE(reader.read());
    EXPECT_EQ(ordered.openingsSoFar, 0u);
    EXPECT_EQ(controller.openedClasses.size(), 1u);
}

TEST_F(PowerReaderLifeTest, EndOfTheReaderClosesTheController)
{
    {
        PowerReader reader(controller, registry);
        EXPECT_TRUE(reader.read());
    }
    EXPECT_THAT(controller.closedConnections, ElementsAre(CannedSmc::kConnection));
}

TEST_F(PowerReaderLifeTest, ReaderThatNeverReadTouchesNothing)
{
    {
        const PowerReader reader(controller, registry);
    }
    EXPECT_THAT(controller.openedClasses, IsEmpty());
    EXPECT_THAT(controller.closedConnections, IsEmpty());
    EXPECT_THAT(registry.foundClasses, IsEmpty());
}

TEST_F(PowerReaderLifeTest, EachReaderRemembersItsOwnMissingKeys)
{
    controller.refuse("PSTR");
    for (int run = 0; run < 2; ++run) {
        PowerReader reader(controller, registry);
        EXPECT_TRUE(reader.read());
    }
    EXPECT_THAT(controller.conversation(), ElementsAre("PSTR?", "PSTR?"));
}

} // namespace
} // namespace amperly
