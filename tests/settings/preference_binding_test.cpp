#include "settings/preference_binding.h"

#include "platform/memory_preference_store.h"
#include "prefs/pref.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

class PreferenceBindingTest : public testing::Test {
protected:
    MemoryPreferenceStore store;
};

TEST_F(PreferenceBindingTest, EveryTypeComesBackAsItWasSet)
{
    const PreferenceBinding<bool> stacked(Pref::stacked, store);
    const PreferenceBinding<std::int64_t> decimals(Pref::decimals, store);
    const PreferenceBinding<double> interval(Pref::interval, store);
    const PreferenceBinding<std::string> icon(Pref::macIcon, store);
    const PreferenceBinding<ReadingStyle> style(Pref::macStyle, store);
    stacked.set(false);
    decimals.set(0);
    interval.set(5.0);
    icon.set("cpu");
    style.set(ReadingStyle::hidden);
    EXPECT_EQ(stacked.value(), false);
    EXPECT_EQ(decimals.value(), 0);
    EXPECT_EQ(interval.value(), 5.0);
    EXPECT_EQ(icon.value(), "cpu");
    EXPECT_EQ(style.value(), ReadingStyle::hidden);
    EXPECT_EQ(store.text(Pref::macStyle), "hidden");
    EXPECT_EQ(store.text(Pref::stacked), "0") << "a boolean, not a text";
}

TEST_F(PreferenceBindingTest, WithoutAStoredOrRegisteredValueThePreferencesOwnDefaultIsRead)
{
    EXPECT_EQ(PreferenceBinding<bool>(Pref::stacked, store).value(), true);
    EXPECT_EQ(PreferenceBinding<bool>(Pref::compact, store).value(), false);
    EXPECT_EQ(PreferenceBinding<std::int64_t>(Pref::decimals, store).value(), 1);
    EXPECT_EQ(PreferenceBinding<double>(Pref::interval, store).value(), 2.0);
    EXPECT_EQ(PreferenceBinding<std::string>(Pref::clickShows, store).value(), "panel");
    EXPECT_EQ(PreferenceBinding<ReadingStyle>(Pref::batteryStyle, store).value(), ReadingStyle::iconAndValue);
}

TEST_F(PreferenceBindingTest, ReadingStoresNothing)
{
    EXPECT_EQ(PreferenceBinding<double>(Pref::interval, store).value(), 2.0);
    EXPECT_EQ(store.text(Pref::interval), std::nullopt);
}

TEST_F(PreferenceBindingTest, AnUnknownStyleIsNoStyle)
{
    store.set(Pref::macStyle, std::string("Hidden"));
    EXPECT_EQ(PreferenceBinding<ReadingStyle>(Pref::macStyle, store).value(), std::nullopt);
}

TEST_F(PreferenceBindingTest, ValuesOfAHandWrittenFileAreReadAsWhatTheyMean)
{
    store.set(Pref::stacked, std::string("false"));
    store.set(Pref::decimals, std::string("0"));
    store.set(Pref::interval, std::string("5"));
    EXPECT_EQ(PreferenceBinding<bool>(Pref::stacked, store).value(), false);
    EXPECT_EQ(PreferenceBinding<std::int64_t>(Pref::decimals, store).value(), 0);
    EXPECT_EQ(PreferenceBinding<double>(Pref::interval, store).value(), 5.0);
}

TEST_F(PreferenceBindingTest, TheStandardStoreIsUsedWhereNoneIsNamed)
{
    const Injected<PreferenceStore> standard(store);
    PreferenceBinding<bool>(Pref::largeText).set(true);
    EXPECT_TRUE(store.boolean(Pref::largeText));
}

} // namespace
} // namespace amperly
