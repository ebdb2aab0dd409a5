#include "prefs/pref.h"

#include "platform/memory_preference_store.h"
#include "platform/simulated/desktop/recording_desktop.h"

#include <gmock/gmock.h>

namespace amperly {
namespace {

using namespace std::string_literals;

class PrefTest : public testing::Test {
protected:
    /// What a user would have to do to leave no default in its place.
    void changeEverything()
    {
        for (const Preference& row : Pref::rows)
            store.set(row.key, "changed"s);
    }

    MemoryPreferenceStore store;
};

TEST_F(PrefTest, AccessorsYieldTheStoredKeys)
{
    EXPECT_EQ(Pref::macStyle, "macStyle");
    EXPECT_EQ(Pref::chargerStyle, "chargerStyle");
    EXPECT_EQ(Pref::batteryStyle, "batteryStyle");
    EXPECT_EQ(Pref::macIcon, "macIcon");
    EXPECT_EQ(Pref::decimals, "decimals");
    EXPECT_EQ(Pref::showUnit, "showUnit");
    EXPECT_EQ(Pref::showUnitStacked, "showUnitStacked");
    EXPECT_EQ(Pref::largeText, "largeText");
    EXPECT_EQ(Pref::hideIdleBattery, "hideIdleBattery");
    EXPECT_EQ(Pref::smoothing, "smoothing");
    EXPECT_EQ(Pref::clickShows, "clickShows");
    EXPECT_EQ(Pref::loginItemConfigured, "loginItemConfigured");
}

TEST_F(PrefTest, ThreeKeysDifferFromTheirAccessor)
{
    EXPECT_EQ(Pref::compact, "compactSpacing");
    EXPECT_EQ(Pref::stacked, "stackedLayout");
    EXPECT_EQ(Pref::interval, "updateInterval");
}

TEST_F(PrefTest, DefaultsAreFourteenValuesOfTheStoredTypes)
{
    const PreferenceDictionary expected{
        {"macStyle", "iconAndValue"s},
        {"chargerStyle", "iconAndValue"s},
        {"batteryStyle", "iconAndValue"s},
        {"macIcon", "laptopcomputer"s},
        {"decimals", std::int64_t{1}},
        {"showUnit", true},
        {"showUnitStacked", false},
        {"largeText", false},
        {"compactSpacing", false},
        {"stackedLayout", true},
        {"hideIdleBattery", false},
        {"updateInterval", 2.0},
        {"smoothing", true},
        {"clickShows", "panel"s},
    };
    EXPECT_EQ(Pref::defaults(), expected);
    EXPECT_EQ(Pref::defaults().size(), 14u);
}

TEST_F(PrefTest, FreshInstallHasNotConfiguredItsLoginItem)
{
    store.registerDefaults(Pref::defaults());
    EXPECT_EQ(Pref::defaults().count(Pref::loginItemConfigured), 0u);
    EXPECT_FALSE(store.boolean(Pref::loginItemConfigured));
}

TEST_F(PrefTest, StoredStyleIsTheOneShown)
{
    store.set("macStyle", "valueOnly"s);
    EXPECT_EQ(Pref::style("macStyle", store), ReadingStyle::valueOnly);
}

TEST_F(PrefTest, EveryStyleCanBeStoredUnderEveryStyleKey)
{
    for (const std::string_view key : {Pref::macStyle, Pref::chargerStyle, Pref::batteryStyle}) {
        for (const ReadingStyle style : allCases) {
            store.set(key, std::string(rawValue(style)));
            EXPECT_EQ(Pref::style(key, store), style);
        }
    }
}

TEST_F(PrefTest, MissingEmptyOrUnknownStyleNeverHidesAReading)
{
    EXPECT_EQ(Pref::style("batteryStyle", store), ReadingStyle::iconAndValue);
    for (const PreferenceValue& value :
        {PreferenceValue("Hidden"s), PreferenceValue(""s), PreferenceValue(true), PreferenceValue(3.0)}) {
        store.set("batteryStyle", value);
        EXPECT_EQ(Pref::style("batteryStyle", store), ReadingStyle::iconAndValue) << asText(value);
    }
}

TEST_F(PrefTest, StyleIsReadFromTheStandardStoreUnlessToldOtherwise)
{
    const Injected<PreferenceStore> inForce(store);
    store.set("chargerStyle", "hidden"s);
    EXPECT_EQ(Pref::style("chargerStyle"), ReadingStyle::hidden);
}

TEST_F(PrefTest, AfterAResetEveryKeyReadsItsDefault)
{
    store.registerDefaults(Pref::defaults());
    changeEverything();
    Pref::resetToDefaults(store);
    for (const auto& [key, fallback] : Pref::defaults())
        EXPECT_EQ(store.text(key), asText(fallback)) << key;
}

TEST_F(PrefTest, ResetRemovesValuesInsteadOfStoringDefaults)
{
    changeEverything();
    Pref::resetToDefaults(store);
    for (const auto& [key, fallback] : Pref::defaults())
        EXPECT_EQ(store.text(key), std::nullopt) << key;
}

TEST_F(PrefTest, ResetKeepsWhatIsNoChoiceOfTheUser)
{
    store.set(Pref::loginItemConfigured, true);
    store.set("anotherProgramsKey", "kept"s);
    Pref::resetToDefaults(store);
    EXPECT_TRUE(store.boolean(Pref::loginItemConfigured));
    EXPECT_EQ(store.text("anotherProgramsKey"), "kept");
}

TEST_F(PrefTest, IconsAreOfferedInOrder)
{
    std::vector<std::pair<std::string_view, std::string_view>> icons;
    for (const MacIcon& icon : Pref::macIcons)
        icons.emplace_back(icon.symbol, icon.name);
    EXPECT_THAT(icons,
        testing::ElementsAre(std::pair("laptopcomputer", "Laptop"), std::pair("bolt.fill", "Bolt"),
            std::pair("gauge.with.dots.needle.50percent", "Gauge"), std::pair("cpu", "Chip"),
            std::pair("powerplug.fill", "Plug")));
}

TEST_F(PrefTest, DefaultIconIsTheFirstOneOffered)
{
    EXPECT_EQ(asText(Pref::defaults().at("macIcon")), Pref::macIcons.front().symbol);
}

TEST_F(PrefTest, VersionIsAskedForEachTime)
{
    RecordingDesktop installation;
    installation.setShortVersion("1.2");
    EXPECT_EQ(Pref::version(installation), "1.2");
    installation.setShortVersion("1.3");
    EXPECT_EQ(Pref::version(installation), "1.3");
}

TEST_F(PrefTest, VersionIsEmptyWhereTheInstallationStatesNone)
{
    const RecordingDesktop installation;
    EXPECT_EQ(Pref::version(installation), "");
}

TEST_F(PrefTest, DonationPageIsASecureAddress)
{
    EXPECT_TRUE(Pref::coffeeURL().starts_with("https://"));
}

} // namespace
} // namespace amperly
