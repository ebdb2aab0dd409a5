#include "platform/memory_preference_store.h"
#include "prefs/pref.h"
#include "render/status_renderer.h"
#include "tests/render/status_art_fixture.h"
#include "tests/support/number_environment.h"

namespace amperly {
namespace {

const NumberEnvironment kEnglish{"en_US.UTF-8"};

class StatusCompositionTest : public StatusArtTest {
protected:
    StatusCompositionTest()
    {
        store.registerDefaults(Pref::defaults());
        store.set(Pref::stacked, false);
    }

    [[nodiscard]] StatusImage composed() const { return StatusRenderer::image(sample, store); }

    void style(ReadingStyle each)
    {
        for (const std::string_view key : {Pref::macStyle, Pref::chargerStyle, Pref::batteryStyle})
            store.set(key, std::string{rawValue(each)});
    }

    MemoryPreferenceStore store;
    std::optional<PowerSample> sample = PowerSample{.systemLoad = 14.24,
        .adapterIn = 30.1,
        .battery = 15.86,
        .batteryPercent = 64,
        .externalConnected = true};
};

TEST_F(StatusCompositionTest, ReadingsComeInTheirOrder)
{
    EXPECT_EQ(composed(),
        image(kLine,
            {piece(kLaptop, "14.2 W", "14"), piece(kPlug, "30.1 W", "30"),
                piece("battery.100percent.bolt", "+15.9 W", "+16")}));
}

TEST_F(StatusCompositionTest, WithoutASampleTheComputerHasADash)
{
    sample = std::nullopt;
    EXPECT_EQ(composed(), image(kLine, {piece(kLaptop, "\u2013", "\u2013")}));
}

TEST_F(StatusCompositionTest, WithoutASampleStylesDontCount)
{
    sample = std::nullopt;
    style(ReadingStyle::hidden);
    EXPECT_EQ(composed(), image(kLine, {piece(kLaptop, "\u2013", "\u2013")}));
}

TEST_F(StatusCompositionTest, WithEveryReadingHiddenTheComputerStandsAlone)
{
    style(ReadingStyle::hidden);
    EXPECT_EQ(composed(), image(kLine, {piece(kLaptop, "")}));
}

TEST_F(StatusCompositionTest, WithTheOnlyShownReadingLeftOutTheComputerStandsAlone)
{
    style(ReadingStyle::hidden);
    store.set(Pref::batteryStyle, std::string{"iconAndValue"});
    store.set(Pref::hideIdleBattery, true);
    sample->battery = 0.0;
    EXPECT_EQ(composed(), image(kLine, {piece(kLaptop, "")}));
}

TEST_F(StatusCompositionTest, WithoutAChargerThereIsNoChargerReading)
{
    sample->externalConnected = false;
    ASSERT_EQ(composed().readingCount(), 2);
    EXPECT_EQ(composed().pieces()[1].symbol, "battery.100percent.bolt");
}

TEST_F(StatusCompositionTest, WithoutAChargerThereIsNoChargerReadingWhateverItsStyle)
{
    sample->externalConnected = false;
    for (const char* each : {"iconAndValue", "valueOnly", "iconOnly", "hidden", "nonsense"}) {
        store.set(Pref::chargerStyle, std::string{each});
        EXPECT_EQ(composed(),
            image(
                kLine, {piece(kLaptop, "14.2 W", "14"), piece("battery.100percent.bolt", "+15.9 W", "+16")}))
            << each;
    }
}

TEST_F(StatusCompositionTest, AnIdleBatteryCanBeHidden)
{
    store.set(Pref::hideIdleBattery, true);
    sample->battery = -0.2;
    EXPECT_EQ(composed().readingCount(), 2);
    sample->battery = -0.3;
    ASSERT_EQ(composed().readingCount(), 3);
    EXPECT_EQ(composed().readingText(2), "\u22120.3 W");
}

TEST_F(StatusCompositionTest, ABatteryWhoseFlowIsUnknownIsNotTakenForIdle)
{
    store.set(Pref::hideIdleBattery, true);
    sample->battery = 0.0;
    sample->batteryKnown = false;
    ASSERT_EQ(composed().readingCount(), 3);
    EXPECT_EQ(composed().readingText(2), "\u2013");
}

TEST_F(StatusCompositionTest, AnIdleBatteryIsShownOtherwise)
{
    sample->battery = -0.2;
    EXPECT_EQ(composed().readingText(2), "\u22120.2 W");
}

TEST_F(StatusCompositionTest, InTheStackedLayoutItsOwnUnitChoiceCounts)
{
    store.set(Pref::stacked, true);
    EXPECT_EQ(composed().readingText(0), "14.2");
    EXPECT_EQ(composed().setting().arrangement, Arrangement::Stacked);
    store.set(Pref::showUnitStacked, true);
    store.set(Pref::showUnit, false);
    EXPECT_EQ(composed().readingText(0), "14.2 W");
}

TEST_F(StatusCompositionTest, InALineTheOtherUnitChoiceCounts)
{
    store.set(Pref::showUnitStacked, true);
    store.set(Pref::showUnit, false);
    EXPECT_EQ(composed().readingText(0), "14.2");
}

TEST_F(StatusCompositionTest, EachReadingHasItsOwnStyle)
{
    store.set(Pref::macStyle, std::string{"valueOnly"});
    store.set(Pref::chargerStyle, std::string{"iconOnly"});
    store.set(Pref::batteryStyle, std::string{"hidden"});
    EXPECT_EQ(composed(), image(kLine, {piece({}, "14.2 W", "14"), piece(kPlug, "")}));
}

TEST_F(StatusCompositionTest, AnUnknownStyleShowsBoth)
{
    store.set(Pref::macStyle, std::string{"Hidden"});
    EXPECT_EQ(composed().pieces()[0], piece(kLaptop, "14.2 W", "14"));
}

TEST_F(StatusCompositionTest, TheComputersSymbolCanBeChosen)
{
    store.set(Pref::macIcon, std::string{"gauge.with.dots.needle.50percent"});
    EXPECT_EQ(composed().pieces()[0].symbol, "gauge.with.dots.needle.50percent");
}

TEST_F(StatusCompositionTest, ASymbolThatIsNoneIsTheBolt)
{
    store.set(Pref::macIcon, std::string{"toaster"});
    EXPECT_EQ(composed().pieces()[0].symbol, "bolt.fill");
}

TEST_F(StatusCompositionTest, WithoutAnyDefaultsTheComputerIsALaptop)
{
    const MemoryPreferenceStore empty;
    const StatusImage made = StatusRenderer::image(sample, empty);
    EXPECT_EQ(made.pieces()[0], piece(kLaptop, "14", "14"));
    EXPECT_EQ(made.setting(), kLine);
}

TEST_F(StatusCompositionTest, DecimalsAreLimitedToNoneAndOne)
{
    store.set(Pref::decimals, std::int64_t{-1});
    EXPECT_EQ(composed().readingText(0), "14 W");
    store.set(Pref::decimals, std::int64_t{0});
    EXPECT_EQ(composed().readingText(0), "14 W");
    store.set(Pref::decimals, std::int64_t{4'294'967'296});
    EXPECT_EQ(composed().readingText(0), "14.2 W");
}

TEST_F(StatusCompositionTest, LargeAndCompactAreHandedOn)
{
    store.set(Pref::largeText, true);
    EXPECT_EQ(composed().setting(), (StatusImage::Setting{.large = true}));
    store.set(Pref::compact, true);
    EXPECT_EQ(composed().setting(), (StatusImage::Setting{.large = true, .compact = true}));
}

TEST_F(StatusCompositionTest, FiguresThatAreNotKnownAreDashes)
{
    sample->systemLoadKnown = false;
    sample->systemLoad = 0.0;
    sample->batteryKnown = false;
    sample->battery = 0.0;
    EXPECT_EQ(composed(),
        image(kLine,
            {piece(kLaptop, "\u2013", "\u2013"), piece(kPlug, "30.1 W", "30"),
                piece("battery.75percent", "\u2013", "\u2013")}));
}

TEST_F(StatusCompositionTest, WholeWattsFollowFromWhatIsShown)
{
    // 14.46 shows as 14.5, and that as 14 by the rule of even halves: samples that look the same
    // must be the same image.
    sample->systemLoad = 14.46;
    const StatusImage lower = composed();
    sample->systemLoad = 14.54;
    EXPECT_EQ(composed(), lower);
    EXPECT_EQ(lower.pieces()[0], piece(kLaptop, "14.5 W", "14"));
}

} // namespace
} // namespace amperly
