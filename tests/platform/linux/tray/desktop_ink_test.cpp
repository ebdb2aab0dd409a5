#include "platform/linux/tray/desktop_ink.h"

#include <QGuiApplication>
#include <QPalette>
#include <array>
#include <gtest/gtest.h>

namespace amperly {
namespace {

/// Goes back to the palette that there was, after all that listens has gone.
struct UsualPalette {
    UsualPalette() = default;
    UsualPalette(const UsualPalette&) = delete;
    UsualPalette& operator=(const UsualPalette&) = delete;
    ~UsualPalette() { QGuiApplication::setPalette(QPalette()); }
};

class PaletteInkTest : public testing::Test {
protected:
    static void paletteBecomes(QColor text)
    {
        QPalette palette;
        palette.setColor(QPalette::WindowText, text);
        QGuiApplication::setPalette(palette);
    }

    UsualPalette after;
    Ink told{};
    int tellings = 0;
    DesktopInk ink{nullptr};
};

TEST_F(PaletteInkTest, PaletteThatChangesIsNewsAtOnce)
{
    paletteBecomes(QColor(0x23, 0x26, 0x29));
    ink.onChanged([&] {
        told = ink.ink(PanelInk::Palette);
        ++tellings;
    });
    paletteBecomes(QColor(0xfc, 0xfc, 0xfc));
    EXPECT_EQ(told, Ink{0xfffcfcfc});
    EXPECT_EQ(tellings, 1);
}

TEST_F(PaletteInkTest, WithoutAPortalThePalettesLightnessIsTheScheme)
{
    paletteBecomes(Qt::black);
    EXPECT_EQ(ink.ink(PanelInk::ColorScheme), kBlackInk);
    paletteBecomes(Qt::white);
    EXPECT_EQ(ink.ink(PanelInk::ColorScheme), kWhiteInk);
}

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
