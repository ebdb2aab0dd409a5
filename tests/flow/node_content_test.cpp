#include "flow/panel_content.h"

#include "render/status_renderer.h"
#include "tests/support/print_sample.h"

#include <gtest/gtest.h>

namespace amperly {

void PrintTo(const NodeContent& content, std::ostream* out)
{
    *out << content.symbol << " \"" << content.value << "\" \"" << content.title << "\" "
         << (content.active ? "active" : "inactive");
}

namespace {

const bool kNumbersAreEnglish = (StatusRenderer::useLocale("en_US"), true);

constexpr Color kAccent{0.1, 0.2, 0.9};

const PowerSample kCharging{.systemLoad = 14.2,
    .adapterIn = 30.1,
    .battery = 15.9,
    .adapterRating = 140,
    .batteryPercent = 64,
    .externalConnected = true};
const PowerSample kOnBattery{.systemLoad = 7.25, .battery = -7.25, .batteryPercent = 55};

TEST(ChargerNodeTest, ShowsItsInputAndItsRating)
{
    EXPECT_EQ(chargerContent(kCharging),
        (NodeContent{"powerplug.fill", "30.1 W", "140 W charger", FlowColor::charger, true}));
}

TEST(ChargerNodeTest, WithoutARatingItIsJustACharger)
{
    PowerSample sample = kCharging;
    sample.adapterRating.reset();
    EXPECT_EQ(chargerContent(sample).title, "Charger");
}

TEST(ChargerNodeTest, OnBatteryItIsUnpluggedAndDead)
{
    EXPECT_EQ(chargerContent(kOnBattery),
        (NodeContent{"powerplug.fill", "–", "Unplugged", FlowColor::charger, false}));
}

TEST(ChargerNodeTest, WhereNobodyKnowsOfAChargerItIsNotCalledUnplugged)
{
    const PowerSample sample{.adapterInKnown = false, .externalKnown = false};
    EXPECT_EQ(
        chargerContent(sample), (NodeContent{"powerplug.fill", "–", "Charger", FlowColor::charger, false}));
    EXPECT_EQ(chargerSentence(sample), "Charger: –");
}

TEST(ChargerNodeTest, ARatingThatIsKnownIsShownEvenUnplugged)
{
    PowerSample sample = kOnBattery;
    sample.adapterRating = 96;
    EXPECT_EQ(chargerContent(sample).title, "96 W charger");
    EXPECT_EQ(chargerContent(sample).value, "–");
}

TEST(ChargerNodeTest, IsActiveFromHalfAWattOn)
{
    PowerSample sample{.adapterIn = 0.5, .externalConnected = true};
    EXPECT_TRUE(chargerContent(sample).active);
    sample.adapterIn = 0.49;
    EXPECT_FALSE(chargerContent(sample).active);
    EXPECT_EQ(chargerContent(sample).value, "0.5 W");
}

TEST(ChargerNodeTest, AnUnknownInputIsADash)
{
    PowerSample sample = kCharging;
    sample.adapterIn = 0.0;
    sample.adapterInKnown = false;
    EXPECT_EQ(chargerContent(sample).value, "–");
    EXPECT_EQ(chargerContent(sample).title, "140 W charger");
}

TEST(ChargerNodeTest, AnUnknownInputIsTakenForPowerWhileTheBatteryNeedNotDeliver)
{
    PowerSample sample{.battery = 15.9, .externalConnected = true, .adapterInKnown = false};
    EXPECT_TRUE(chargerContent(sample).active);
    sample.battery = -5.0;
    EXPECT_FALSE(chargerContent(sample).active);
    sample.battery = 0.0;
    sample.batteryKnown = false;
    EXPECT_FALSE(chargerContent(sample).active);
}

TEST(ComputerNodeTest, ShowsTheLoadInTheDesktopsColorAndIsAlwaysActive)
{
    EXPECT_EQ(
        computerContent(kCharging, kAccent), (NodeContent{"laptopcomputer", "14.2 W", "Mac", kAccent, true}));
    EXPECT_TRUE(computerContent({}, kAccent).active);
}

TEST(ComputerNodeTest, AnUnknownLoadIsADash)
{
    EXPECT_EQ(computerContent({.systemLoadKnown = false}, kAccent).value, "–");
}

TEST(BatteryNodeTest, ShowsWhatGoesIn)
{
    EXPECT_EQ(batteryContent(kCharging),
        (NodeContent{"battery.100percent.bolt", "+15.9 W", "Battery 64%", FlowColor::charging, true}));
}

TEST(BatteryNodeTest, ShowsWhatComesOut)
{
    EXPECT_EQ(batteryContent(kOnBattery),
        (NodeContent{"battery.50percent", "−7.2 W", "Battery 55%", FlowColor::draining, true}));
}

TEST(BatteryNodeTest, BelowAThirdOfAWattItIsIdle)
{
    for (const double watts : {-0.29, 0.0, 0.29}) {
        const NodeContent content = batteryContent({.battery = watts, .externalConnected = true});
        EXPECT_EQ(content.value, "Idle") << watts;
        EXPECT_FALSE(content.active) << watts;
    }
    for (const double watts : {-0.3, 0.3})
        EXPECT_TRUE(batteryContent({.battery = watts}).active) << watts;
    EXPECT_EQ(batteryContent({.battery = -0.1}).tint, FlowColor::draining);
    EXPECT_EQ(batteryContent({.battery = 0.0}).tint, FlowColor::charging);
}

TEST(BatteryNodeTest, WithoutAPercentageItIsJustABattery)
{
    EXPECT_EQ(batteryContent({.battery = -5.0}).title, "Battery");
}

TEST(BatteryNodeTest, AnUnknownFlowIsADashAndNotIdle)
{
    const NodeContent content = batteryContent({.batteryPercent = 80, .batteryKnown = false});
    EXPECT_EQ(content.value, "–");
    EXPECT_EQ(content.title, "Battery 80%");
    EXPECT_FALSE(content.active);
}

TEST(NodeSentenceTest, EachNodeIsSaidInOneSentence)
{
    EXPECT_EQ(chargerSentence(kCharging), "Charger supplying 30.1 W of 140 W");
    EXPECT_EQ(computerSentence(kCharging), "Mac using 14.2 W");
    EXPECT_EQ(batterySentence(kCharging), "Battery charging: 15.9 W (64%)");
    EXPECT_EQ(chargerSentence(kOnBattery), "Charger unplugged");
    EXPECT_EQ(chargerSentence({.externalConnected = true, .adapterInKnown = false}), "Charger supplying –");
}

} // namespace
} // namespace amperly
