#include "platform/macos/fonts/system_font.h"
#include "render/font_file.h"
#include "render/system_symbols.h"

#include <numeric>

#include <gtest/gtest.h>

namespace amperly {
namespace {

constexpr GlyphStyle kLine{.pointSize = 13.0, .weight = FontWeight::Regular};

/// The ink in the rows from `top` to before `bottom`.
int inkOf(const CoverageMask& mask, int top, int bottom)
{
    const auto row = [&](int y) { return mask.coverage.begin() + y * mask.width; };
    return std::accumulate(row(top), row(bottom), 0);
}

FontFile systemFont(FontWeight weight)
{
    return *FontFile::open(*SystemFont().face(weight, U"0123456789"));
}

TEST(SymbolsOnAMacTest, EveryDrawingOfTheProgramsIsASymbolOfTheSystemsToo)
{
    for (const GlyphForm& form : kGlyphForms)
        EXPECT_TRUE(systemSymbolSize(form.name, kLine)) << form.name;
}

TEST(SymbolsOnAMacTest, ASymbolStandsUpright)
{
    const auto drawing = drawSystemSymbol("exclamationmark.triangle.fill", kLine, 2.0);
    ASSERT_TRUE(drawing);
    const CoverageMask& mask = drawing->mask;
    const int third = mask.height / 3;
    EXPECT_GT(inkOf(mask, mask.height - third, mask.height), inkOf(mask, 0, third));
}

TEST(SymbolsOnAMacTest, WhatIsNoSymbolIsTheFallback)
{
    EXPECT_EQ(systemSymbolSize("no.such.symbol", kLine), systemSymbolSize(kFallbackGlyph, kLine));
}

TEST(TextOnAMacTest, AllDigitsAreOfOneWidth)
{
    const FontFile font = systemFont(FontWeight::Regular);
    for (char32_t digit = U'1'; digit <= U'9'; ++digit)
        EXPECT_NEAR(font.advance(digit), font.advance(U'0'), 1e-6);
    EXPECT_GT(font.rise(U'0'), 0.5);
    EXPECT_LT(font.rise(U'0'), 1.0);
}

TEST(TextOnAMacTest, ADigitStandsUprightAndFillsItsMask)
{
    FontFile font = systemFont(FontWeight::Regular);
    const auto drawing = font.draw(U'7', 44.0);
    ASSERT_TRUE(drawing);
    const CoverageMask& mask = drawing->mask;
    ASSERT_GT(mask.height, 20);
    const int quarter = mask.height / 4;
    EXPECT_GT(inkOf(mask, 0, quarter), inkOf(mask, mask.height - quarter, mask.height)); // its bar is above
    EXPECT_GT(inkOf(mask, mask.height - quarter, mask.height), 0);
}

TEST(TextOnAMacTest, AHeavierWeightHasMoreInk)
{
    FontFile regular = systemFont(FontWeight::Regular);
    FontFile medium = systemFont(FontWeight::Medium);
    const auto light = regular.draw(U'8', 44.0);
    const auto heavy = medium.draw(U'8', 44.0);
    ASSERT_TRUE(light && heavy);
    EXPECT_GT(inkOf(heavy->mask, 0, heavy->mask.height), inkOf(light->mask, 0, light->mask.height));
}

TEST(TextOnAMacTest, ASpaceHasAWidthAndNoInk)
{
    const auto drawing = systemFont(FontWeight::Regular).draw(U' ', 20.0);
    ASSERT_TRUE(drawing);
    EXPECT_GT(drawing->advance, 0);
    EXPECT_EQ(drawing->mask.width, 0);
}

} // namespace
} // namespace amperly
