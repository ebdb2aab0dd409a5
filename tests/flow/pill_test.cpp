#include "flow/panel_content.h"

#include <gtest/gtest.h>
#include <ostream>

namespace amperly {

void PrintTo(const Pill& pill, std::ostream* out)
{
    *out << '"' << pill.text << "\" " << pill.symbol;
}

namespace {

const Pill kOnBattery{"On battery", "battery.50percent", FlowColor::draining};
const Pill kRunningOnBattery{"Plugged in \u00b7 running on battery", "powerplug", FlowColor::draining};
const Pill kCharging{"Charging", "bolt.fill", FlowColor::charging};
const Pill kUsingBatteryToo{"Using battery too", "exclamationmark.triangle.fill", FlowColor::draining};
const Pill kNotCharging{"Plugged in \u00b7 not charging", "powerplug.fill", FlowColor::charger};

Pill pluggedIn(double adapterIn, double battery)
{
    return pill({.adapterIn = adapterIn, .battery = battery, .externalConnected = true});
}

TEST(PillTest, UnpluggedMeansOnBatteryWhateverTheFiguresSay)
{
    EXPECT_EQ(pill({.battery = -8.0}), kOnBattery);
    EXPECT_EQ(pill({.adapterIn = 30.0, .battery = 5.0}), kOnBattery);
    EXPECT_EQ(pill({.batteryKnown = false}), kOnBattery);
}

TEST(PillTest, WhereNobodyKnowsOfAChargerNoneIsDenied)
{
    const Pill unknown{"Power source unknown", "powerplug", FlowColor::charger};
    EXPECT_EQ(pill({.batteryKnown = false, .externalKnown = false}), unknown);
    EXPECT_EQ(pill({.battery = -8.0, .externalKnown = false}), unknown);
}

TEST(PillTest, AnAdapterThatDeliversNothingLeavesTheWorkToTheBattery)
{
    EXPECT_EQ(pluggedIn(0.2, -5.0), kRunningOnBattery);
}

TEST(PillTest, AnAdapterAtHalfAWattDelivers)
{
    EXPECT_EQ(pluggedIn(0.5, -5.0), kUsingBatteryToo);
    EXPECT_EQ(pluggedIn(0.49, -5.0), kRunningOnBattery);
}

TEST(PillTest, AWeakAdapterIsHelpedByTheBattery)
{
    EXPECT_EQ(pluggedIn(30.0, -5.0), kUsingBatteryToo);
}

TEST(PillTest, PowerIntoTheBatteryIsCharging)
{
    EXPECT_EQ(pluggedIn(30.0, 15.0), kCharging);
    EXPECT_EQ(pluggedIn(0.2, 15.0), kCharging);
}

TEST(PillTest, ABatteryAtRestIsNotCharging)
{
    EXPECT_EQ(pluggedIn(30.0, 0.0), kNotCharging);
    EXPECT_EQ(pluggedIn(0.2, 0.0), kNotCharging);
}

TEST(PillTest, ExactlyAThirdOfAWattIsAtRest)
{
    EXPECT_EQ(pluggedIn(30.0, 0.3), kNotCharging);
    EXPECT_EQ(pluggedIn(30.0, -0.3), kNotCharging);
    EXPECT_EQ(pluggedIn(0.2, -0.3), kNotCharging);
    EXPECT_EQ(pluggedIn(30.0, 0.31), kCharging);
    EXPECT_EQ(pluggedIn(30.0, -0.31), kUsingBatteryToo);
}

TEST(PillTest, AnInputThatIsNotKnownIsNotSaidToBeNothing)
{
    EXPECT_EQ(pill({.battery = -5.0, .externalConnected = true, .adapterInKnown = false}), kUsingBatteryToo);
}

TEST(PillTest, OfABatteryThatIsNotKnownNothingIsSaid)
{
    const Pill expected{"Plugged in", "powerplug.fill", FlowColor::charger};
    EXPECT_EQ(pill({.adapterIn = 30.0, .externalConnected = true, .batteryKnown = false}), expected);
}

} // namespace
} // namespace amperly
