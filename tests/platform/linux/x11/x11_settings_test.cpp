#include "platform/linux/x11/x11_settings.h"

#include "tests/platform/linux/x11/serialised_settings.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

constexpr const char* kAnimations = "Gtk/EnableAnimations";

TEST(X11SettingsTest, AnIntegerIsFoundAmongAllKindsOfSettings)
{
    for (const bool lowestFirst : {true, false}) {
        SerialisedSettings settings(lowestFirst, 4);
        settings.text("Net/ThemeName", "Adwaita")
            .color("Gtk/Color")
            .integer(kAnimations, 0)
            .integer("Xft/DPI", 9);
        EXPECT_EQ(integerSetting(settings.bytes(), kAnimations), 0) << lowestFirst;
        EXPECT_EQ(integerSetting(settings.bytes(), "Xft/DPI"), 9) << lowestFirst;
    }
}

TEST(X11SettingsTest, ATextIsFoundBesideIntegers)
{
    SerialisedSettings settings(true, 2);
    settings.integer(kAnimations, 0).text("Net/ThemeName", "Adwaita-dark");
    EXPECT_EQ(textSetting(settings.bytes(), "Net/ThemeName"), "Adwaita-dark");
    EXPECT_EQ(textSetting(settings.bytes(), kAnimations), std::nullopt);
    EXPECT_EQ(textSetting(std::span(settings.bytes()).first(settings.bytes().size() - 1), "Net/ThemeName"),
        std::nullopt);
}

TEST(X11SettingsTest, ANegativeIntegerIsRead)
{
    EXPECT_EQ(integerSetting(SerialisedSettings(true, 1).integer("Xft/DPI", -1).bytes(), "Xft/DPI"), -1);
}

TEST(X11SettingsTest, AMissingSettingAndOneOfAnotherKindAreNothing)
{
    SerialisedSettings settings(true, 1);
    settings.text(kAnimations, "0");
    EXPECT_EQ(integerSetting(settings.bytes(), kAnimations), std::nullopt);
    EXPECT_EQ(integerSetting(settings.bytes(), "Xft/DPI"), std::nullopt);
    EXPECT_EQ(integerSetting({}, kAnimations), std::nullopt);
}

TEST(X11SettingsTest, WhereverTheyAreCutShortSettingsAreNothing)
{
    SerialisedSettings settings(true, 2);
    settings.text("Net/ThemeName", "Adwaita").integer(kAnimations, 0);
    for (std::size_t length = 0; length < settings.bytes().size(); ++length)
        EXPECT_EQ(integerSetting(std::span(settings.bytes()).first(length), kAnimations), std::nullopt)
            << length;
}

TEST(X11SettingsTest, WhatFollowsASettingOfAnUnknownKindCannotBeRead)
{
    SerialisedSettings settings(true, 2);
    settings.unheardOf("New").integer(kAnimations, 0);
    EXPECT_EQ(integerSetting(settings.bytes(), kAnimations), std::nullopt);
}

TEST(X11SettingsTest, WithoutAnX11DisplayThereAreNone)
{
    EXPECT_EQ(x11IntegerSetting(kAnimations), std::nullopt);
}

} // namespace
} // namespace amperly
