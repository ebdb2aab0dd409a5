#include "render/text_masks.h"

#include "platform/simulated/desktop/fixed_ui_font.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace amperly {
namespace {

constexpr TextMaskStyle kSmall{.pointSize = 9.5, .weight = FontWeight::Medium};
constexpr TextMaskStyle kUsual{.pointSize = 11.0, .weight = FontWeight::Regular};
constexpr TextMaskStyle kLarge{.pointSize = 13.0, .weight = FontWeight::Regular};

/// Notes which characters were asked for.
class ListeningFont : public FixedUiFont {
public:
    ListeningFont() : FixedUiFont({AMPERLY_PINNED_FONT, 0}, {AMPERLY_PINNED_FONT, 0}) { }

    [[nodiscard]] std::optional<FontFace> face(
        FontWeight weight, std::u32string_view characters) const override
    {
        m_asked.emplace_back(characters);
        return FixedUiFont::face(weight, characters);
    }

    [[nodiscard]] const std::vector<std::u32string>& asked() const { return m_asked; }

private:
    mutable std::vector<std::u32string> m_asked;
};

class TextMasksTest : public testing::Test {
protected:
    CoverageMask drawn(std::string_view words, const TextMaskStyle& style, double scale, double left = 0.0)
    {
        CoverageMask mask;
        const double width = (left + text.width(words, style)) * scale;
        mask.clear(static_cast<int>(width), static_cast<int>(24.0 * scale));
        text.draw(mask, words, style, {.left = left, .middle = 12.0}, scale);
        return mask;
    }

    static std::vector<std::uint8_t> columns(const CoverageMask& mask, int first, int count)
    {
        std::vector<std::uint8_t> pixels;
        for (int y = 0; y < mask.height; ++y) {
            for (int x = first; x < first + count; ++x)
                pixels.push_back(mask.at(x, y));
        }
        return pixels;
    }

    static int firstInkedRow(const CoverageMask& mask)
    {
        const auto ink
            = std::find_if(mask.coverage.begin(), mask.coverage.end(), [](auto each) { return each > 0; });
        return static_cast<int>(ink - mask.coverage.begin()) / mask.width;
    }

    static int lastInkedRow(const CoverageMask& mask)
    {
        const auto ink
            = std::find_if(mask.coverage.rbegin(), mask.coverage.rend(), [](auto each) { return each > 0; });
        return mask.height - 1 - static_cast<int>(ink - mask.coverage.rbegin()) / mask.width;
    }

    ListeningFont font;
    TextMasks text{font};
};

TEST_F(TextMasksTest, AllDigitsAreEquallyWide)
{
    for (const TextMaskStyle& style : {kSmall, kUsual, kLarge}) {
        for (const char digit : std::string("123456789"))
            EXPECT_EQ(text.width(std::string(1, digit), style), text.width("0", style));
        EXPECT_EQ(text.width("11.1", style), text.width("88.8", style));
    }
}

TEST_F(TextMasksTest, EasternDigitsAreEquallyWideToo)
{
    for (const std::string_view digit : {"\u0661", "\u0665", "\u0668", "\u0669"})
        EXPECT_EQ(text.width(digit, kUsual), text.width("\u0660", kUsual));
    EXPECT_GT(text.width("\u0660", kUsual), 0.0);
}

TEST_F(TextMasksTest, WidthsAreWholePoints)
{
    for (const std::string_view word : {"14.2 W", "\u22121,234.5", "+7", "\u2013", "1\u202f234,5"})
        EXPECT_EQ(text.width(word, kSmall), std::floor(text.width(word, kSmall))) << word;
}

TEST_F(TextMasksTest, NothingHasNoWidth)
{
    EXPECT_EQ(text.width("", kUsual), 0.0);
}

TEST_F(TextMasksTest, MarksOfWritingDirectionTakeNoRoom)
{
    EXPECT_EQ(text.width("\u061c\u200e12\u200f", kUsual), text.width("12", kUsual));
}

TEST_F(TextMasksTest, NarrowSpacesAreNarrowerThanSpaces)
{
    EXPECT_GT(text.width("\u202f", kLarge), 0.0);
    EXPECT_LT(text.width("\u202f", kLarge), text.width(" ", kLarge));
}

TEST_F(TextMasksTest, ADigitLooksTheSameWhereverItStands)
{
    for (const int scale : {1, 2, 3}) {
        const int cell = static_cast<int>(text.width("0", kUsual)) * scale;
        const CoverageMask mask = drawn("3213", kUsual, scale);
        EXPECT_EQ(columns(mask, 0, cell), columns(mask, 3 * cell, cell)) << scale;
    }
}

TEST_F(TextMasksTest, DigitsNeverTouch)
{
    for (double size = 8.0; size <= 14.0; size += 0.5) {
        const TextMaskStyle style{.pointSize = size};
        const CoverageMask mask = drawn("00", style, 1.0);
        int freeColumns = 0;
        for (int x = 0; x < mask.width; ++x) {
            const auto column = columns(mask, x, 1);
            freeColumns
                += std::all_of(column.begin(), column.end(), [](auto each) { return each < 64; }) ? 1 : 0;
        }
        EXPECT_GE(freeColumns, 1) << size;
    }
}

TEST_F(TextMasksTest, ADigitThatChangesLeavesTheOthersUntouched)
{
    const int cell = static_cast<int>(text.width("0", kUsual));
    const CoverageMask before = drawn("14.2", kUsual, 1.0);
    const CoverageMask after = drawn("14.9", kUsual, 1.0);
    EXPECT_NE(before, after);
    EXPECT_EQ(columns(before, 0, 2 * cell), columns(after, 0, 2 * cell));
}

TEST_F(TextMasksTest, DigitsAreCentredInTheHeight)
{
    for (const TextMaskStyle& style : {kSmall, kUsual, kLarge}) {
        for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
            const CoverageMask mask = drawn("0123456789", style, scale);
            const int above = firstInkedRow(mask);
            const int below = mask.height - 1 - lastInkedRow(mask);
            EXPECT_LE(std::abs(above - below), 1) << style.pointSize << " at " << scale;
        }
    }
}

TEST_F(TextMasksTest, TheSameTextIsAsWideAtEveryScale)
{
    for (const int scale : {1, 2, 3})
        EXPECT_EQ(drawn("14.2 W", kUsual, scale).width, drawn("14.2 W", kUsual, 1.0).width * scale);
}

TEST_F(TextMasksTest, SmallFiguresHaveFullInk)
{
    for (const TextMaskStyle& style : {kSmall, kUsual}) {
        const CoverageMask mask = drawn("1", style, 1.0);
        EXPECT_GE(std::count_if(mask.coverage.begin(), mask.coverage.end(),
                      [](auto coverage) { return coverage >= 245; }),
            6);
    }
}

TEST_F(TextMasksTest, TheUsualCharactersAreAskedForTogether)
{
    static_cast<void>(drawn("14.2 W", kUsual, 1.0));
    static_cast<void>(drawn("\u22127,5", kUsual, 1.0));
    EXPECT_EQ(font.asked().size(), 1U);
}

TEST_F(TextMasksTest, OtherDigitsAreAskedForAsAScript)
{
    static_cast<void>(drawn("\u0663\u0661", kUsual, 1.0));
    ASSERT_EQ(font.asked().size(), 2U);
    EXPECT_EQ(font.asked()[1], U"\u0660\u0661\u0662\u0663\u0664\u0665\u0666\u0667\u0668\u0669");
}

TEST_F(TextMasksTest, WhatNoFontHasTakesNoRoomAndIsAskedForOnce)
{
    EXPECT_EQ(text.width("\U0001f50b", kUsual), 0.0);
    EXPECT_EQ(drawn("7\U0001f50b", kUsual, 1.0), drawn("7", kUsual, 1.0));
    EXPECT_EQ(font.asked().size(), 2U);
}

TEST_F(TextMasksTest, TextThatIsNotUtf8IsDrawnAsFarAsItIs)
{
    EXPECT_GE(text.width("7\xff", kUsual), text.width("7", kUsual));
}

TEST_F(TextMasksTest, HoweverManySizesAreDrawnTheLastOneIsRight)
{
    const CoverageMask first = drawn("8", kUsual, 1.0);
    for (int size = 5; size < 40; ++size)
        static_cast<void>(drawn("8", {.pointSize = static_cast<double>(size)}, 1.0));
    EXPECT_EQ(drawn("8", kUsual, 1.0), first);
}

TEST_F(TextMasksTest, AfterClearingTheFontIsAskedForAgain)
{
    const double before = text.width("8", kUsual);
    text.clear();
    EXPECT_EQ(text.width("8", kUsual), before);
    EXPECT_EQ(font.asked().size(), 2U);
}

TEST(TextWithoutFontsTest, HasNoSizeAndNoInk)
{
    const FixedUiFont none;
    TextMasks text{none};
    EXPECT_EQ(text.width("14.2 W", kUsual) - text.width(" ", kUsual), 0.0);
    EXPECT_EQ(text.height(kUsual), 0.0);
    CoverageMask mask;
    mask.clear(40, 24);
    text.draw(mask, "14.2 W", kUsual, {.left = 0.0, .middle = 12.0}, 1.0);
    EXPECT_TRUE(
        std::all_of(mask.coverage.begin(), mask.coverage.end(), [](auto coverage) { return coverage == 0; }));
}

} // namespace
} // namespace amperly
