#include "render/decimal_formatter.h"
#include "render/status_renderer.h"
#include "tests/support/number_environment.h"
#include "tests/support/print_sample.h"

#include <cmath>
#include <limits>
#include <set>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace amperly {
namespace {

const NumberEnvironment kEnglish{"en_US.UTF-8"};

std::string signedWatts(double value, int decimals)
{
    return StatusRenderer::watts(value, decimals, true, true);
}

TEST(WattsTest, DecimalsAreLimitedToZeroAndOne)
{
    EXPECT_EQ(StatusRenderer::watts(12.34, 1), "12.3 W");
    EXPECT_EQ(StatusRenderer::watts(12.34, 0), "12 W");
    EXPECT_EQ(StatusRenderer::watts(12.34, 2), "12.3 W");
    EXPECT_EQ(StatusRenderer::watts(12.34, -1), "12 W");
    EXPECT_EQ(StatusRenderer::watts(12.34, std::numeric_limits<int>::max()), "12.3 W");
    EXPECT_EQ(StatusRenderer::watts(12.34, std::numeric_limits<int>::min()), "12 W");
}

TEST(WattsTest, TheUnitCanBeLeftOut)
{
    EXPECT_EQ(StatusRenderer::watts(7.0, 1, false), "7.0");
    EXPECT_EQ(StatusRenderer::watts(-7.0, 1, false, true), "\u22127.0");
}

TEST(WattsTest, WithoutASignTheMagnitudeShows)
{
    EXPECT_EQ(StatusRenderer::watts(-5.0, 1, true, false), "5.0 W");
    EXPECT_EQ(StatusRenderer::watts(-0.0, 1), "0.0 W");
}

TEST(WattsTest, MinusIsTheTrueMinusSign)
{
    EXPECT_EQ(signedWatts(-5.0, 1), "\u22125.0 W");
}

TEST(WattsTest, PlusIsSaid)
{
    EXPECT_EQ(signedWatts(5.0, 1), "+5.0 W");
    EXPECT_EQ(signedWatts(0.06, 1), "+0.1 W");
}

TEST(WattsTest, WhatShowsAsZeroHasNoSign)
{
    EXPECT_EQ(signedWatts(0.04, 1), "0.0 W");
    EXPECT_EQ(signedWatts(-0.04, 1), "0.0 W");
    EXPECT_EQ(signedWatts(0.4, 0), "0 W");
    EXPECT_EQ(signedWatts(-0.4, 0), "0 W");
    EXPECT_EQ(signedWatts(0.0, 1), "0.0 W");
    EXPECT_EQ(signedWatts(-0.0, 0), "0 W");
}

TEST(WattsTest, AHalfOfTheLastPlaceShowsAsSignedZero)
{
    EXPECT_EQ(signedWatts(0.5, 0), "+0 W");
    EXPECT_EQ(signedWatts(-0.5, 0), "\u22120 W");
    EXPECT_EQ(signedWatts(0.05, 1), "+0.0 W");
    EXPECT_EQ(signedWatts(-0.05, 1), "\u22120.0 W");
}

TEST(WattsTest, JustLessThanAHalfHasNoSign)
{
    EXPECT_EQ(signedWatts(std::nextafter(0.5, 0.0), 0), "0 W");
    EXPECT_EQ(signedWatts(0.0499, 1), "0.0 W");
}

TEST(WattsTest, ThousandsAreGrouped)
{
    EXPECT_EQ(StatusRenderer::watts(1234.5, 1), "1,234.5 W");
    EXPECT_EQ(signedWatts(-1234.5, 1), "\u22121,234.5 W");
}

TEST(WattsTest, NumbersWithoutEndKeepSignAndUnit)
{
    EXPECT_EQ(signedWatts(std::numeric_limits<double>::infinity(), 1), "+∞ W");
    EXPECT_EQ(signedWatts(-std::numeric_limits<double>::infinity(), 0), "\u2212∞ W");
}

TEST(WattsTest, WhatIsNoNumberHasNoSign)
{
    EXPECT_EQ(signedWatts(std::numeric_limits<double>::quiet_NaN(), 1), "NaN W");
    EXPECT_EQ(signedWatts(-std::numeric_limits<double>::quiet_NaN(), 1), "NaN W");
}

TEST(WattsTest, AppendingKeepsWhatIsThere)
{
    std::string text = "Battery: ";
    StatusRenderer::appendWatts(text, -3.25, 1, true, true);
    EXPECT_EQ(text, "Battery: \u22123.2 W");
}

TEST(WattsTest, ThereAreTwoFormattersByTheirDecimals)
{
    EXPECT_EQ(StatusRenderer::formatters()[0].fractionDigits(), 0);
    EXPECT_EQ(StatusRenderer::formatters()[1].fractionDigits(), 1);
    EXPECT_EQ(StatusRenderer::formatters().size(), 2U);
}

TEST(WattsTest, ThreadsThatComeFirstTogetherGetTheSameFormatters)
{
    std::vector<const void*> seen(4);
    std::vector<std::string> texts(seen.size());
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < seen.size(); ++thread) {
        threads.emplace_back([&, thread] {
            texts[thread] = StatusRenderer::watts(1234.5, 1);
            seen[thread] = StatusRenderer::formatters().data();
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(std::set(seen.begin(), seen.end()).size(), 1U);
    EXPECT_EQ(std::set(texts.begin(), texts.end()), std::set<std::string>{"1,234.5 W"});
}

TEST(FlowTextTest, KnownFlowsShowTheirWatts)
{
    const PowerSample sample{.systemLoad = 14.2, .adapterIn = 30.1, .battery = 15.9};
    EXPECT_EQ(StatusRenderer::systemLoadText(sample, 1), "14.2 W");
    EXPECT_EQ(StatusRenderer::adapterInText(sample, 0), "30 W");
    EXPECT_EQ(StatusRenderer::systemLoadText(sample, 0, false), "14");
    EXPECT_EQ(StatusRenderer::adapterInText(sample, 1, false), "30.1");
}

TEST(FlowTextTest, OnlyTheBatterysFlowIsSigned)
{
    EXPECT_EQ(StatusRenderer::batteryText({.battery = 15.9}, 1), "+15.9 W");
    EXPECT_EQ(StatusRenderer::batteryText({.battery = -15.9}, 0, false), "\u221216");
    EXPECT_EQ(StatusRenderer::batteryText({.battery = 0.0}, 1), "0.0 W");
    EXPECT_EQ(StatusRenderer::systemLoadText({.systemLoad = 15.9}, 1), "15.9 W");
    EXPECT_EQ(StatusRenderer::adapterInText({.adapterIn = 15.9}, 1), "15.9 W");
}

TEST(FlowTextTest, AFlowNobodyKnowsIsADashWithoutUnitOrSign)
{
    const PowerSample sample{
        .battery = 3.0, .systemLoadKnown = false, .adapterInKnown = false, .batteryKnown = false};
    for (const bool unit : {false, true}) {
        EXPECT_EQ(StatusRenderer::systemLoadText(sample, 1, unit), "\u2013");
        EXPECT_EQ(StatusRenderer::adapterInText(sample, 0, unit), "\u2013");
        EXPECT_EQ(StatusRenderer::batteryText(sample, 1, unit), "\u2013");
    }
}

TEST(FlowTextTest, EachFlowIsKnownOrNotByItself)
{
    const PowerSample sample{.systemLoad = 14.2, .adapterIn = 30.1, .battery = 15.9, .adapterInKnown = false};
    EXPECT_EQ(StatusRenderer::systemLoadText(sample, 1), "14.2 W");
    EXPECT_EQ(StatusRenderer::adapterInText(sample, 1), "\u2013");
    EXPECT_EQ(StatusRenderer::batteryText(sample, 1), "+15.9 W");
}

TEST(WattsLocaleTest, AnotherLocaleCountsFromThenOn)
{
    StatusRenderer::useLocale("de_DE");
    EXPECT_EQ(StatusRenderer::watts(1234.5, 1), "1.234,5 W");
    StatusRenderer::useLocale("en_US");
    EXPECT_EQ(StatusRenderer::watts(1234.5, 1), "1,234.5 W");
}

} // namespace
} // namespace amperly
