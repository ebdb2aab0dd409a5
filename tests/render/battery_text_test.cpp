#include "render/status_renderer.h"
#include "tests/support/number_environment.h"
#include "tests/support/print_sample.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace amperly {
namespace {

const NumberEnvironment kEnglish{"en_US.UTF-8"};

std::string_view symbolAt(int percent)
{
    return StatusRenderer::batterySymbol({.batteryPercent = percent});
}

TEST(BatterySymbolTest, ChargingShowsTheBoltWhateverTheLevel)
{
    EXPECT_EQ(
        StatusRenderer::batterySymbol({.battery = 15.9, .batteryPercent = 5}), "battery.100percent.bolt");
    EXPECT_EQ(StatusRenderer::batterySymbol({.battery = 15.9}), "battery.100percent.bolt");
}

TEST(BatterySymbolTest, ExactlyTheIdleThresholdIsNotCharging)
{
    const double above = std::nextafter(StatusRenderer::idleWatts, 1.0);
    EXPECT_EQ(StatusRenderer::batterySymbol({.battery = 0.3, .batteryPercent = 50}), "battery.50percent");
    EXPECT_EQ(
        StatusRenderer::batterySymbol({.battery = above, .batteryPercent = 50}), "battery.100percent.bolt");
}

TEST(BatterySymbolTest, DrainingAndIdleShowTheLevel)
{
    EXPECT_EQ(StatusRenderer::batterySymbol({.battery = -15.9, .batteryPercent = 50}), "battery.50percent");
    EXPECT_EQ(StatusRenderer::batterySymbol({.battery = 0.1, .batteryPercent = 50}), "battery.50percent");
}

TEST(BatterySymbolTest, WithoutALevelTheBatteryLooksFull)
{
    EXPECT_EQ(StatusRenderer::batterySymbol({.battery = -15.9}), "battery.100percent");
}

TEST(BatterySymbolTest, ALevelTakesTheNearestGlyph)
{
    EXPECT_EQ(symbolAt(0), "battery.0percent");
    EXPECT_EQ(symbolAt(12), "battery.0percent");
    EXPECT_EQ(symbolAt(13), "battery.25percent");
    EXPECT_EQ(symbolAt(37), "battery.25percent");
    EXPECT_EQ(symbolAt(38), "battery.50percent");
    EXPECT_EQ(symbolAt(62), "battery.50percent");
    EXPECT_EQ(symbolAt(63), "battery.75percent");
    EXPECT_EQ(symbolAt(87), "battery.75percent");
    EXPECT_EQ(symbolAt(88), "battery.100percent");
    EXPECT_EQ(symbolAt(100), "battery.100percent");
}

TEST(BatterySymbolTest, LevelsBeyondTheScaleTakeItsEnds)
{
    EXPECT_EQ(symbolAt(-1), "battery.0percent");
    EXPECT_EQ(symbolAt(104), "battery.100percent");
}

TEST(BatterySymbolTest, AFlowNobodyKnowsNeverShowsTheBolt)
{
    const PowerSample sample{
        .battery = 15.9, .batteryPercent = 50, .externalConnected = true, .batteryKnown = false};
    EXPECT_EQ(StatusRenderer::batterySymbol(sample), "battery.50percent");
}

TEST(BatteryDescriptionTest, SaysWhichWayThePowerGoes)
{
    EXPECT_EQ(StatusRenderer::batteryDescription({.battery = 12.3, .batteryPercent = 82}),
        "Battery charging: 12.3 W (82%)");
    EXPECT_EQ(StatusRenderer::batteryDescription({.battery = -4.0, .batteryPercent = 55}),
        "Battery draining: 4.0 W (55%)");
}

TEST(BatteryDescriptionTest, AnIdleBatteryHasNoWatts)
{
    EXPECT_EQ(
        StatusRenderer::batteryDescription({.battery = 0.0, .batteryPercent = 100}), "Battery idle (100%)");
    EXPECT_EQ(StatusRenderer::batteryDescription({}), "Battery idle");
}

TEST(BatteryDescriptionTest, TheIdleThresholdItselfIsAFlow)
{
    EXPECT_EQ(StatusRenderer::batteryDescription({.battery = -0.29}), "Battery idle");
    EXPECT_EQ(StatusRenderer::batteryDescription({.battery = 0.29}), "Battery idle");
    EXPECT_EQ(StatusRenderer::batteryDescription({.battery = -0.3}), "Battery draining: 0.3 W");
    EXPECT_EQ(StatusRenderer::batteryDescription({.battery = 0.3}), "Battery charging: 0.3 W");
}

TEST(BatteryDescriptionTest, ThePercentageIsAPlainInteger)
{
    EXPECT_EQ(StatusRenderer::batteryDescription({.batteryPercent = 0}), "Battery idle (0%)");
    EXPECT_EQ(StatusRenderer::batteryDescription({.batteryPercent = -1}), "Battery idle (-1%)");
    EXPECT_EQ(StatusRenderer::batteryDescription({.batteryPercent = 12345}), "Battery idle (12345%)");
    EXPECT_EQ(StatusRenderer::batteryDescription({.batteryPercent = std::numeric_limits<int>::min()}),
        "Battery idle (-2147483648%)");
}

TEST(BatteryDescriptionTest, OffTheChargerAFlowNobodyKnowsIsDraining)
{
    EXPECT_EQ(StatusRenderer::batteryDescription({.batteryKnown = false}), "Battery draining: \u2013");
    EXPECT_EQ(StatusRenderer::batteryDescription({.batteryPercent = 55, .batteryKnown = false}),
        "Battery draining: \u2013 (55%)");
}

TEST(BatteryDescriptionTest, OnTheChargerAFlowNobodyKnowsGoesEitherWay)
{
    EXPECT_EQ(StatusRenderer::batteryDescription({.externalConnected = true, .batteryKnown = false}),
        "Battery: \u2013");
    EXPECT_EQ(StatusRenderer::batteryDescription(
                  {.batteryPercent = 55, .externalConnected = true, .batteryKnown = false}),
        "Battery: \u2013 (55%)");
}

TEST(BatteryDescriptionTest, WhereNobodyKnowsOfAChargerAFlowNobodyKnowsGoesEitherWay)
{
    EXPECT_EQ(StatusRenderer::batteryDescription(
                  {.batteryPercent = 55, .batteryKnown = false, .externalKnown = false}),
        "Battery: \u2013 (55%)");
    EXPECT_EQ(StatusRenderer::batteryDescription({.battery = -4.0, .externalKnown = false}),
        "Battery draining: 4.0 W");
}

TEST(BatteryDescriptionTest, AppendingKeepsWhatIsThere)
{
    std::string text = "Now: ";
    StatusRenderer::appendBatteryDescription(text, {.battery = -4.0});
    EXPECT_EQ(text, "Now: Battery draining: 4.0 W");
}

TEST(AccessibilityTextTest, NoSampleIsSaid)
{
    EXPECT_EQ(StatusRenderer::accessibilityText(std::nullopt), "Amperly: no power data");
}

TEST(AccessibilityTextTest, OnTheChargerAllThreeFlowsAreSaid)
{
    const PowerSample sample{.systemLoad = 14.2,
        .adapterIn = 30.1,
        .battery = 15.9,
        .batteryPercent = 64,
        .externalConnected = true};
    EXPECT_EQ(StatusRenderer::accessibilityText(sample),
        "Mac using 14.2 W, charger supplying 30.1 W, Battery charging: 15.9 W (64%)");
}

TEST(AccessibilityTextTest, OffTheChargerItsFlowIsNotSaidWhateverItIs)
{
    EXPECT_EQ(StatusRenderer::accessibilityText(PowerSample{.systemLoad = 14.2, .adapterIn = 30.1}),
        "Mac using 14.2 W, Battery idle");
}

TEST(AccessibilityTextTest, AConnectedChargerThatDeliversNothingIsSaid)
{
    EXPECT_EQ(StatusRenderer::accessibilityText(
                  PowerSample{.systemLoad = 5.0, .battery = -5.0, .externalConnected = true}),
        "Mac using 5.0 W, charger supplying 0.0 W, Battery draining: 5.0 W");
}

TEST(AccessibilityTextTest, FlowsNobodyKnowsAreDashes)
{
    EXPECT_EQ(StatusRenderer::accessibilityText(PowerSample{.externalConnected = true,
                  .systemLoadKnown = false,
                  .adapterInKnown = false,
                  .batteryKnown = false}),
        "Mac using \u2013, charger supplying \u2013, Battery: \u2013");
    EXPECT_EQ(StatusRenderer::accessibilityText(PowerSample{.batteryPercent = 9, .systemLoadKnown = false}),
        "Mac using \u2013, Battery idle (9%)");
    EXPECT_EQ(StatusRenderer::accessibilityText(PowerSample{.systemLoadKnown = false,
                  .adapterInKnown = false,
                  .batteryKnown = false,
                  .externalKnown = false}),
        "Mac using \u2013, Battery: \u2013");
}

} // namespace
} // namespace amperly
