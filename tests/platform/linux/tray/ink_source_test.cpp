#include "platform/linux/tray/ink_source.h"

#include "platform/linux/tray/x11_tray_colors.h"

#include <array>
#include <gtest/gtest.h>

namespace amperly {
namespace {

constexpr Ink kDarkText{0xff232629};
constexpr Ink kLightText{0xfffcfcfc};
constexpr Ink kRed{0xffff0000};

TEST(ChooseInkTest, WhatTheTraySaysCountsEverywhere)
{
    const InkFacts facts{.tray = kRed, .prefersDark = true, .paletteText = kDarkText};
    EXPECT_EQ(chooseInk(PanelInk::White, facts), kRed);
    EXPECT_EQ(chooseInk(PanelInk::Palette, facts), kRed);
    EXPECT_EQ(chooseInk(PanelInk::ColorScheme, facts), kRed);
}

TEST(ChooseInkTest, PanelThatIsAlwaysDarkGetsWhite)
{
    EXPECT_EQ(
        chooseInk(PanelInk::White, {.tray = {}, .prefersDark = false, .paletteText = kDarkText}), kWhiteInk);
}

TEST(ChooseInkTest, PanelInTheToolkitsColoursGetsItsTextColour)
{
    EXPECT_EQ(
        chooseInk(PanelInk::Palette, {.tray = {}, .prefersDark = true, .paletteText = kDarkText}), kDarkText);
}

TEST(ChooseInkTest, SchemeDecidesAgainstThePalette)
{
    EXPECT_EQ(chooseInk(PanelInk::ColorScheme, {.tray = {}, .prefersDark = true, .paletteText = kDarkText}),
        kWhiteInk);
    EXPECT_EQ(chooseInk(PanelInk::ColorScheme, {.tray = {}, .prefersDark = false, .paletteText = kLightText}),
        kBlackInk);
}

TEST(ChooseInkTest, WithoutASchemeThePalettesLightnessDecides)
{
    EXPECT_EQ(chooseInk(PanelInk::ColorScheme, {.tray = {}, .prefersDark = {}, .paletteText = kLightText}),
        kWhiteInk);
    EXPECT_EQ(chooseInk(PanelInk::ColorScheme, {.tray = {}, .prefersDark = {}, .paletteText = kDarkText}),
        kBlackInk);
}

TEST(TrayColorsTest, FirstColourIsTakenFromItsChannelsHighBytes)
{
    const std::array<std::uint32_t, 12> channels{0xffff, 0x8080, 0x0101, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(decodeTrayColors(channels), Ink{0xffff8001});
}

TEST(TrayColorsTest, TooShortAPropertyHasNoColour)
{
    const std::array<std::uint32_t, 2> channels{0xffff, 0xffff};
    EXPECT_EQ(decodeTrayColors(channels), std::nullopt);
    EXPECT_EQ(decodeTrayColors({}), std::nullopt);
}

TEST(TrayColorsTest, ToolkitThatIsNotOnX11HasNoTray)
{
    EXPECT_EQ(X11TrayColors::create(), nullptr);
}

} // namespace
} // namespace amperly
