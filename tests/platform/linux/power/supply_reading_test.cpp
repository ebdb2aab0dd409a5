#include "platform/linux/power/supply_reading.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(SupplyAttributesTest, UeventTellsTypeStatusAndNumbers)
{
    const SupplyAttributes battery = SupplyAttributes::fromUevent("DEVTYPE=power_supply\n"
                                                                  "POWER_SUPPLY_NAME=BAT0\n"
                                                                  "POWER_SUPPLY_TYPE=Battery\n"
                                                                  "POWER_SUPPLY_STATUS=Not charging\n"
                                                                  "POWER_SUPPLY_CURRENT_NOW=-523000\n");
    EXPECT_EQ(battery.type(), SupplyType::Battery);
    EXPECT_EQ(battery.status(), SupplyStatus::NotCharging);
    EXPECT_EQ(battery.number(Attribute::CurrentNow), -523000);
    EXPECT_EQ(battery.number(Attribute::PowerNow), std::nullopt);
}

TEST(SupplyAttributesTest, LastLineMayLackItsEnd)
{
    const SupplyAttributes mains
        = SupplyAttributes::fromUevent("POWER_SUPPLY_TYPE=Mains\nPOWER_SUPPLY_ONLINE=1");
    EXPECT_EQ(mains.number(Attribute::Online), 1);
}

TEST(SupplyAttributesTest, FirstOfTwoTypesStays)
{
    const SupplyAttributes battery
        = SupplyAttributes::fromUevent("POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_TYPE=Mains\n");
    EXPECT_EQ(battery.type(), SupplyType::Battery);
}

TEST(SupplyAttributesTest, LinesWithoutMeaningAreSkipped)
{
    const SupplyAttributes battery = SupplyAttributes::fromUevent(
        "\n=\nPOWER_SUPPLY_\nPOWER_SUPPLY_=5\nSTATUS=Full\nPOWER_SUPPLY_CAPACITY_LEVEL=Normal\n"
        "POWER_SUPPLY_CAPACITY=80\n");
    EXPECT_EQ(battery.number(Attribute::Capacity), 80);
    EXPECT_FALSE(battery.has(Attribute::Status));
}

TEST(SupplyAttributesTest, WhatIsNoWholeNumberIsMissing)
{
    for (const char* text : {"", "12mW", "1.5", "0x10", "99999999999999999999", "--1", "\xff"}) {
        SupplyAttributes supply;
        supply.set(Attribute::PowerNow, text);
        EXPECT_FALSE(supply.has(Attribute::PowerNow)) << text;
    }
}

TEST(SupplyAttributesTest, EveryKindOfUsbPortIsExternal)
{
    for (const char* text : {"Mains", "USB", "USB_DCP", "USB_C", "USB_PD", "USB_PD_DRP", "Wireless"}) {
        SupplyAttributes supply;
        supply.set(Attribute::Type, text);
        EXPECT_EQ(supply.type(), SupplyType::External) << text;
    }
}

TEST(SupplyAttributesTest, UninterruptibleSupplyIsABattery)
{
    SupplyAttributes supply;
    supply.set(Attribute::Type, "UPS");
    EXPECT_EQ(supply.type(), SupplyType::Battery);
}

TEST(SupplyAttributesTest, SupplyOfAMouseDoesNotCount)
{
    SupplyAttributes mouse;
    mouse.set(Attribute::Type, "Battery");
    EXPECT_TRUE(mouse.counts());
    mouse.set(Attribute::Scope, "Device");
    EXPECT_FALSE(mouse.counts());
}

TEST(SupplyAttributesTest, SupplyOfUnknownTypeDoesNotCount)
{
    SupplyAttributes supply;
    EXPECT_FALSE(supply.counts());
    supply.set(Attribute::Type, "Unknown");
    EXPECT_FALSE(supply.counts());
}

TEST(SupplyAttributesTest, EmptyBayDoesNotCountWhateverItsCapacity)
{
    const SupplyAttributes bay = SupplyAttributes::fromUevent(
        "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_PRESENT=0\nPOWER_SUPPLY_CAPACITY=100\n");
    EXPECT_FALSE(bay.counts());
}

} // namespace
} // namespace amperly
