#include "settings/form_look.h"

#include "render/look/window_colors.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

QPalette paletteOf(const QColor& text, const QColor& window, const QColor& base, const QColor& accent)
{
    QPalette palette;
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(
        QPalette::HighlightedText, contrastRatio(accent, Qt::white) < 3.0 ? Qt::black : Qt::white);
    return palette;
}

const QPalette kLight = paletteOf(Qt::black, QColor(0xef, 0xef, 0xef), Qt::white, QColor(0x30, 0x8c, 0xc6));
const QPalette kDark = paletteOf(
    QColor(0xf2, 0xf2, 0xf4), QColor(0x32, 0x32, 0x34), QColor(0x26, 0x26, 0x28), QColor(0x3d, 0x8e, 0xe6));
const QPalette kHighContrast = paletteOf(Qt::white, Qt::black, Qt::black, QColor(0xff, 0xd6, 0x0a));

TEST(FormLookTest, CardsAreLighterThanTheWindow)
{
    for (const QPalette& palette : {kLight, kDark})
        EXPECT_GT(FormColors::of(palette).card.lightness(), palette.color(QPalette::Window).lightness());
}

TEST(FormLookTest, TextIsLegibleOnCardsAndWindowInBothRanks)
{
    for (const QPalette& palette : {kLight, kDark, kHighContrast}) {
        const FormColors colors = FormColors::of(palette);
        for (const QColor& ground : {colors.card, palette.color(QPalette::Window)}) {
            EXPECT_GE(contrastRatio(colors.text, ground), 7.0);
            EXPECT_GE(contrastRatio(colors.secondary, ground), 4.5);
        }
        EXPECT_GE(contrastRatio(colors.segmentText, colors.segment), 4.5);
    }
}

TEST(FormLookTest, AKnobCanBeToldFromAnyAccent)
{
    for (const QColor& accent : {QColor(0x30, 0x8c, 0xc6), QColor(0xff, 0xd6, 0x0a), QColor(Qt::white)}) {
        const FormColors colors
            = FormColors::of(paletteOf(Qt::black, QColor(0xef, 0xef, 0xef), Qt::white, accent));
        EXPECT_GE(contrastRatio(colors.knob, accent), 1.6);
    }
}

TEST(FormLookTest, InHighContrastEdgesHaveTheTextsColour)
{
    EXPECT_FALSE(isHighContrast(kLight));
    EXPECT_FALSE(isHighContrast(kDark));
    ASSERT_TRUE(isHighContrast(kHighContrast));
    const FormColors colors = FormColors::of(kHighContrast);
    for (const QColor& edge : {colors.cardEdge, colors.separator, colors.fieldEdge, colors.offEdge})
        EXPECT_EQ(edge, colors.text);
}

TEST(FormLookTest, AScrollBarHasRoomInTheMargin)
{
    EXPECT_EQ(kForm.width, 420);
    EXPECT_EQ(kForm.minimumHeight, 300);
    EXPECT_GT(kForm.margin, 14);
}

} // namespace
} // namespace amperly
