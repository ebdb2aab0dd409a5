#include "platform/linux/tray/item_encoding.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

std::vector<std::uint8_t> pixmap(const CoverageMask& mask, Ink ink, PixmapAlpha alpha = PixmapAlpha::Straight)
{
    std::vector<std::uint8_t> bytes(pixmapSize(mask));
    writePixmap(mask, ink, alpha, bytes);
    return bytes;
}

CoverageMask maskOf(std::vector<std::uint8_t> coverage)
{
    return {.width = static_cast<int>(coverage.size()), .height = 1, .coverage = std::move(coverage)};
}

TEST(PixmapTest, PixelIsAlphaRedGreenBlue)
{
    EXPECT_EQ(pixmap(maskOf({255}), {0xff123456}), (std::vector<std::uint8_t>{0xff, 0x12, 0x34, 0x56}));
}

TEST(PixmapTest, CoverageIsAlphaAndLeavesTheColourStraight)
{
    EXPECT_EQ(pixmap(maskOf({128}), {0xffffffff}), (std::vector<std::uint8_t>{128, 0xff, 0xff, 0xff}));
}

TEST(PixmapTest, ClearPixelHasNoColour)
{
    EXPECT_EQ(pixmap(maskOf({0}), {0xffffffff}), (std::vector<std::uint8_t>{0, 0, 0, 0}));
}

TEST(PixmapTest, PremultipliedColourIsAsWeakAsItsAlpha)
{
    EXPECT_EQ(pixmap(maskOf({0, 128, 255}), {0xffff8000}, PixmapAlpha::Premultiplied),
        (std::vector<std::uint8_t>{0, 0, 0, 0, 128, 128, 64, 0, 255, 255, 128, 0}));
}

TEST(PixmapTest, TranslucentInkWeakensTheCoverage)
{
    EXPECT_EQ(
        pixmap(maskOf({255, 128}), {0x80000000}), (std::vector<std::uint8_t>{128, 0, 0, 0, 64, 0, 0, 0}));
}

TEST(PixmapTest, EmptyMaskHasNoBytes)
{
    EXPECT_EQ(pixmap({}, {}), std::vector<std::uint8_t>{});
}

TEST(MarkupTest, PlainTextStaysAsItIs)
{
    EXPECT_EQ(asMarkup("Mac using 12.3 W"), "Mac using 12.3 W");
    EXPECT_EQ(asMarkup("\u22124 W \u00b7 80 %"), "\u22124 W \u00b7 80 %");
    EXPECT_EQ(asMarkup(""), "");
}

TEST(MarkupTest, SignsOfMarkupAreShownAndNotObeyed)
{
    EXPECT_EQ(asMarkup("a<b> & c"), "a&lt;b&gt; &amp; c");
    EXPECT_EQ(asMarkup("&amp;"), "&amp;amp;");
}

} // namespace
} // namespace amperly
