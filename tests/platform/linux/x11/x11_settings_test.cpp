#include "platform/linux/x11/x11_settings.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace amperly {
namespace {

/// Settings as a desktop serialises them.
class Settings {
public:
    explicit Settings(bool lowestFirst, std::uint32_t count) : m_lowestFirst(lowestFirst)
    {
        m_bytes.push_back(lowestFirst ? 0 : 1);
        m_bytes.resize(4);
        number(7, 4);
        number(count, 4);
    }

    Settings& integer(const std::string& name, std::int32_t value)
    {
        head(0, name);
        number(static_cast<std::uint32_t>(value), 4);
        return *this;
    }
    Settings& text(const std::string& name, const std::string& value)
    {
        head(1, name);
        number(static_cast<std::uint32_t>(value.size()), 4);
        padded(value);
        return *this;
    }
    Settings& color(const std::string& name)
    {
        head(2, name);
        number(0x01020304, 4);
        number(0x05060708, 4);
        return *this;
    }
    Settings& unheardOf(const std::string& name)
    {
        head(9, name);
        return *this;
    }

    [[nodiscard]] const std::vector<std::uint8_t>& bytes() const { return m_bytes; }

private:
    void head(std::uint8_t kind, const std::string& name)
    {
        number(kind, 1);
        number(0, 1);
        number(static_cast<std::uint32_t>(name.size()), 2);
        padded(name);
        number(3, 4);
    }
    void number(std::uint32_t value, int size)
    {
        for (int index = 0; index < size; ++index)
            m_bytes.push_back(
                static_cast<std::uint8_t>(value >> 8 * (m_lowestFirst ? index : size - 1 - index)));
    }
    void padded(const std::string& words)
    {
        m_bytes.insert(m_bytes.end(), words.begin(), words.end());
        m_bytes.resize((m_bytes.size() + 3) / 4 * 4);
    }

    bool m_lowestFirst;
    std::vector<std::uint8_t> m_bytes;
};

constexpr const char* kAnimations = "Gtk/EnableAnimations";

TEST(X11SettingsTest, AnIntegerIsFoundAmongAllKindsOfSettings)
{
    for (const bool lowestFirst : {true, false}) {
        Settings settings(lowestFirst, 4);
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
    Settings settings(true, 2);
    settings.integer(kAnimations, 0).text("Net/ThemeName", "Adwaita-dark");
    EXPECT_EQ(textSetting(settings.bytes(), "Net/ThemeName"), "Adwaita-dark");
    EXPECT_EQ(textSetting(settings.bytes(), kAnimations), std::nullopt);
    EXPECT_EQ(textSetting(std::span(settings.bytes()).first(settings.bytes().size() - 1), "Net/ThemeName"),
        std::nullopt);
}

TEST(X11SettingsTest, ANegativeIntegerIsRead)
{
    EXPECT_EQ(integerSetting(Settings(true, 1).integer("Xft/DPI", -1).bytes(), "Xft/DPI"), -1);
}

TEST(X11SettingsTest, AMissingSettingAndOneOfAnotherKindAreNothing)
{
    Settings settings(true, 1);
    settings.text(kAnimations, "0");
    EXPECT_EQ(integerSetting(settings.bytes(), kAnimations), std::nullopt);
    EXPECT_EQ(integerSetting(settings.bytes(), "Xft/DPI"), std::nullopt);
    EXPECT_EQ(integerSetting({}, kAnimations), std::nullopt);
}

TEST(X11SettingsTest, WhereverTheyAreCutShortSettingsAreNothing)
{
    Settings settings(true, 2);
    settings.text("Net/ThemeName", "Adwaita").integer(kAnimations, 0);
    for (std::size_t length = 0; length < settings.bytes().size(); ++length)
        EXPECT_EQ(integerSetting(std::span(settings.bytes()).first(length), kAnimations), std::nullopt)
            << length;
}

TEST(X11SettingsTest, WhatFollowsASettingOfAnUnknownKindCannotBeRead)
{
    Settings settings(true, 2);
    settings.unheardOf("New").integer(kAnimations, 0);
    EXPECT_EQ(integerSetting(settings.bytes(), kAnimations), std::nullopt);
}

TEST(X11SettingsTest, WithoutAnX11DisplayThereAreNone)
{
    EXPECT_EQ(x11IntegerSetting(kAnimations), std::nullopt);
}

} // namespace
} // namespace amperly
