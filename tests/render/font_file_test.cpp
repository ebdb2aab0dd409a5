#include "render/font_file.h"

#include <algorithm>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(FontFileTest, AMissingFileIsNothing)
{
    EXPECT_FALSE(FontFile::open({"/nonexistent/font.ttf", 0}));
}

TEST(FontFileTest, AFileThatIsNoFontIsNothing)
{
    const std::string path = testing::TempDir() + "no_font.ttf";
    std::ofstream(path) << "This is not a font.";
    EXPECT_FALSE(FontFile::open({path, 0}));
}

TEST(FontFileTest, AFaceBeyondTheLastIsNothing)
{
    EXPECT_FALSE(FontFile::open({AMPERLY_PINNED_FONT, 7}));
}

class OpenFontTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(font); }

    static std::uint8_t strongest(const CoverageMask& mask)
    {
        return mask.coverage.empty() ? 0 : *std::max_element(mask.coverage.begin(), mask.coverage.end());
    }

    std::optional<FontFile> font = FontFile::open({AMPERLY_PINNED_FONT, 0});
};

TEST_F(OpenFontTest, KnowsWhatItHas)
{
    EXPECT_TRUE(font->has(U'7'));
    EXPECT_TRUE(font->has(U'\u2212'));
    EXPECT_FALSE(font->has(U'\U0001f50b'));
}

TEST_F(OpenFontTest, MeasuresInEms)
{
    EXPECT_NEAR(font->advance(U'0'), 0.636, 0.001);
    EXPECT_NEAR(font->rise(U'1'), 0.729, 0.001);
    EXPECT_EQ(font->advance(U'\U0001f50b'), 0.0);
}

TEST_F(OpenFontTest, WhatItLacksItCannotDraw)
{
    EXPECT_FALSE(font->draw(U'\U0001f50b', 11.0));
}

TEST_F(OpenFontTest, ASpaceHasAnAdvanceAndNoInk)
{
    const auto space = font->draw(U' ', 11.0);
    ASSERT_TRUE(space);
    EXPECT_GT(space->advance, 0);
    EXPECT_TRUE(space->mask.coverage.empty());
}

TEST_F(OpenFontTest, DigitsStandOnTheBaselineAndAreEquallyHigh)
{
    for (const double size : {9.5, 11.0, 13.0, 22.0}) {
        const int height = font->draw(U'0', size)->top;
        for (char32_t digit = U'0'; digit <= U'9'; ++digit) {
            const auto drawing = font->draw(digit, size);
            EXPECT_EQ(drawing->top, height) << size;
            EXPECT_EQ(drawing->mask.height, height) << size;
        }
    }
}

TEST_F(OpenFontTest, TheStemOfAOneIsFullInkWithLittleGreyBesideIt)
{
    for (const double size : {10.5, 13.0, 22.0, 33.0}) {
        const auto one = font->draw(U'1', size);
        ASSERT_TRUE(one);
        const int row = one->mask.height / 2;
        int full = 0;
        int grey = 0;
        for (int x = 0; x < one->mask.width; ++x) {
            const int coverage = one->mask.at(x, row);
            full += coverage >= 240 ? 1 : 0;
            grey += coverage < 240 ? coverage : 0;
        }
        EXPECT_GE(full, 1) << size;
        EXPECT_LE(grey, 128) << size;
    }
}

TEST_F(OpenFontTest, BarsAreWholePixelsThickAtEverySize)
{
    for (double size = 7.0; size < 40.0; size += 0.25) {
        for (const char32_t bar : {U'\u2212', U'\u2013'}) {
            const auto drawing = font->draw(bar, size);
            ASSERT_TRUE(drawing);
            for (int y = 0; y < drawing->mask.height; ++y)
                EXPECT_EQ(drawing->mask.at(drawing->mask.width / 2, y), 255) << size;
        }
    }
}

TEST_F(OpenFontTest, SmallDigitsAreNotPale)
{
    EXPECT_GE(strongest(font->draw(U'1', 9.5)->mask), 240);
}

} // namespace
} // namespace amperly
