#include "platform/macos/drawing/alpha_bitmap.h"
#include "platform/macos/menubar/template_image.h"

#include "tests/platform/macos/menubar/test_picture.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(AlphaBitmapOnAMacTest, ANewBitmapIsClear)
{
    NSBitmapImageRep* const bitmap = clearBitmap(33, 7);
    ASSERT_TRUE(bitmap != nil);
    EXPECT_GE(bitmap.bytesPerRow, 33 * 4);
    CoverageMask mask;
    mask.clear(33, 7);
    std::fill(mask.coverage.begin(), mask.coverage.end(), std::uint8_t{1});
    takeInk(bitmap, mask);
    EXPECT_TRUE(
        std::all_of(mask.coverage.begin(), mask.coverage.end(), [](std::uint8_t ink) { return ink == 0; }));
}

TEST(AlphaBitmapOnAMacTest, InkComesBackAsItWasPutIn)
{
    CoverageMask mask;
    mask.clear(5, 3);
    for (std::size_t index = 0; index < mask.coverage.size(); ++index)
        mask.coverage[index] = static_cast<std::uint8_t>(index * 17);
    NSBitmapImageRep* const bitmap = clearBitmap(5, 3);
    inkBitmap(bitmap, mask);
    CoverageMask back;
    back.clear(5, 3);
    takeInk(bitmap, back);
    EXPECT_EQ(back, mask);
}

TEST(TemplateImageOnAMacTest, TheImageIsATemplateOfWholePoints)
{
    NSImage* const image = templateImage(TestPicture(30.2));
    EXPECT_TRUE([image isTemplate]);
    EXPECT_EQ(image.size.width, 31.0);
    EXPECT_EQ(image.size.height, 22.0);
}

} // namespace
} // namespace amperly
