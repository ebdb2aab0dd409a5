#include "render/status_layout.h"

#include <array>
#include <cmath>

#include <gtest/gtest.h>

namespace amperly {
namespace {

constexpr double kHeight = 24.0;

PieceSize glyph(double width, double height)
{
    return {.hasGlyph = true, .glyph = {width, height}, .hasText = false, .text = {}};
}

PieceSize text(double width, double height)
{
    return {.hasGlyph = false, .glyph = {}, .hasText = true, .text = {width, height}};
}

PieceSize both(double glyphWidth, double glyphHeight, double textWidth, double textHeight)
{
    return {.hasGlyph = true,
        .glyph = {glyphWidth, glyphHeight},
        .hasText = true,
        .text = {textWidth, textHeight}};
}

TEST(StatusLookTest, SizesFollowTheTwoChoices)
{
    EXPECT_EQ(lineLook(false, false).text.pointSize, 11.0);
    EXPECT_EQ(lineLook(true, false).text.pointSize, 13.0);
    EXPECT_EQ(lineLook(false, false).glyph.pointSize, 13.0);
    EXPECT_EQ(lineLook(true, false).glyph.pointSize, 14.0);
    EXPECT_EQ(lineLook(false, false).text.weight, FontWeight::Regular);
    EXPECT_EQ(lineLook(false, false).gap, 4.0);
    EXPECT_EQ(lineLook(false, true).gap, 2.0);
    EXPECT_EQ(lineLook(false, false).spacing, 9.0);
    EXPECT_EQ(lineLook(false, true).spacing, 5.0);

    EXPECT_EQ(stackedLook(false, false).text.pointSize, 9.5);
    EXPECT_EQ(stackedLook(true, false).text.pointSize, 10.5);
    EXPECT_EQ(stackedLook(false, false).glyph.pointSize, 9.5);
    EXPECT_EQ(stackedLook(true, false).glyph.pointSize, 10.5);
    EXPECT_EQ(stackedLook(false, false).text.weight, FontWeight::Medium);
    EXPECT_EQ(stackedLook(false, false).glyph.weight, FontWeight::Medium);
    EXPECT_EQ(stackedLook(false, true).gap, 0.0);
    EXPECT_EQ(stackedLook(false, false).spacing, 6.0);
    EXPECT_EQ(stackedLook(false, true).spacing, 3.0);
}

TEST(LineLayoutTest, NothingIsOnePointWide)
{
    EXPECT_EQ(lineLayout({}, lineLook(false, false), kHeight).width, 1.0);
}

TEST(LineLayoutTest, SymbolAndValueStandAGapApart)
{
    const std::array pieces{both(20.25, 13.0, 30.5, 12.0)};
    const StatusLayout layout = lineLayout(pieces, lineLook(false, false), kHeight);
    EXPECT_EQ(layout.width, 56.0); // 20.25 + 4 + 31, rounded up
    EXPECT_EQ(layout.places[0], (PiecePlace{.glyphX = 0.0, .glyphY = 5.5, .textX = 24.25, .textY = 6.0}));
}

TEST(LineLayoutTest, TwoPiecesWithCompactSpacingAreTheirWidthsAndFive)
{
    const std::array pieces{both(20.25, 13.0, 30.0, 12.0), both(22.5, 13.0, 28.0, 12.0)};
    const StatusLayout layout = lineLayout(pieces, lineLook(false, true), kHeight);
    EXPECT_EQ(layout.width, std::ceil(5.0 + 52.25 + 52.5));
    EXPECT_EQ(layout.places[1].glyphX, 57.25);
    EXPECT_EQ(layout.places[1].textX, 57.25 + 22.5 + 2.0);
}

TEST(LineLayoutTest, ValuesAloneHaveNoGap)
{
    const std::array pieces{text(30.5, 12.0), text(20.0, 12.0)};
    const StatusLayout layout = lineLayout(pieces, lineLook(false, false), kHeight);
    EXPECT_EQ(layout.width, 31.0 + 9.0 + 20.0);
    EXPECT_EQ(layout.places[0].textX, 0.0);
    EXPECT_EQ(layout.places[1].textX, 40.0);
}

TEST(LineLayoutTest, SymbolsAloneHaveNoGap)
{
    const std::array pieces{glyph(20.0, 13.0), glyph(11.0, 13.0)};
    const StatusLayout layout = lineLayout(pieces, lineLook(false, false), kHeight);
    EXPECT_EQ(layout.width, 40.0);
    EXPECT_EQ(layout.places[1].glyphX, 29.0);
}

TEST(LineLayoutTest, ASymbolWithoutWidthIsDrawnWithAGapThatTheWidthLacks)
{
    const std::array pieces{both(0.0, 13.0, 30.0, 12.0)};
    const StatusLayout layout = lineLayout(pieces, lineLook(false, false), kHeight);
    EXPECT_EQ(layout.width, 30.0);
    EXPECT_EQ(layout.places[0].textX, 4.0);
}

TEST(StackedLayoutTest, NothingIsOnePointWide)
{
    EXPECT_EQ(stackedLayout({}, stackedLook(false, false), kHeight).width, 1.0);
}

TEST(StackedLayoutTest, TheValueStandsOnTheSymbolAndBothAreCentred)
{
    const std::array pieces{both(14.0, 10.0, 21.0, 11.0)};
    const StatusLayout layout = stackedLayout(pieces, stackedLook(false, false), kHeight);
    EXPECT_EQ(layout.width, 21.0);
    EXPECT_EQ(layout.places[0], (PiecePlace{.glyphX = 3.5, .glyphY = 1.5, .textX = 0.0, .textY = 11.5}));
}

TEST(StackedLayoutTest, AColumnIsAsWideAsTheWiderRoundedUp)
{
    const std::array pieces{both(18.5, 10.0, 12.25, 11.0), both(9.0, 10.0, 20.5, 11.0)};
    const StatusLayout layout = stackedLayout(pieces, stackedLook(false, false), kHeight);
    EXPECT_EQ(layout.width, 19.0 + 6.0 + 21.0);
    EXPECT_EQ(layout.places[0].textX, (19.0 - 12.25) * 0.5);
    EXPECT_EQ(layout.places[1].glyphX, 25.0 + 6.0);
}

TEST(StackedLayoutTest, TheSumIsNotRounded)
{
    StatusLook look = stackedLook(false, false);
    look.spacing = 2.5;
    const std::array pieces{glyph(9.0, 10.0), glyph(9.0, 10.0)};
    EXPECT_EQ(stackedLayout(pieces, look, kHeight).width, 20.5);
}

TEST(StackedLayoutTest, ASymbolAloneIsItsWidthRoundedUpAndCentred)
{
    const std::array pieces{glyph(9.5, 10.0)};
    const StatusLayout layout = stackedLayout(pieces, stackedLook(false, false), kHeight);
    EXPECT_EQ(layout.width, 10.0);
    EXPECT_EQ(layout.places[0].glyphX, 0.25);
    EXPECT_EQ(layout.places[0].glyphY, 7.0);
}

TEST(StackedLayoutTest, AValueAloneIsCentred)
{
    const std::array pieces{text(20.0, 11.0)};
    EXPECT_EQ(stackedLayout(pieces, stackedLook(false, false), kHeight).places[0].textY, 6.5);
}

TEST(StackedLayoutTest, AGapCountsOnlyBetweenTwoThingsThatHaveHeight)
{
    StatusLook look = stackedLook(false, false);
    look.gap = 2.0;
    const std::array pieces{both(10.0, 8.0, 10.0, 10.0), both(10.0, 0.0, 10.0, 10.0)};
    const StatusLayout layout = stackedLayout(pieces, look, kHeight);
    EXPECT_EQ(layout.places[0].glyphY, 2.0);
    EXPECT_EQ(layout.places[0].textY, 12.0);
    EXPECT_EQ(layout.places[1].textY, 7.0);
}

} // namespace
} // namespace amperly
