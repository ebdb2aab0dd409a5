#include "platform/macos/menubar/template_image.h"

#include "tests/platform/macos/fakes/fake_desktop_test.h"
#include "tests/platform/macos/menubar/test_picture.h"

namespace amperly {
namespace {

class TemplateImageTest : public FakeDesktopTest {
protected:
    /// The image as a button that is given it sees it.
    const fake_mac::StatusItemState& shown(const StatusPicture& picture)
    {
        NSButton* const button = [NSButton new];
        button.image = templateImage(picture);
        return stage.item;
    }

    static int alphaAt(const fake_mac::Bitmap& bitmap, int x, int y)
    {
        return bitmap.alpha[static_cast<std::size_t>(y * bitmap.width + x)];
    }
};

TEST_F(TemplateImageTest, TheMenuBarChoosesItsInk)
{
    const auto& item = shown(TestPicture());
    EXPECT_TRUE(item.isTemplate);
    for (const fake_mac::Bitmap& bitmap : item.bitmaps)
        EXPECT_TRUE(bitmap.isBlack);
}

TEST_F(TemplateImageTest, ThereIsABitmapForEitherKindOfScreen)
{
    const auto& item = shown(TestPicture(30.0));
    ASSERT_EQ(item.bitmaps.size(), 2U);
    EXPECT_EQ(item.bitmaps[0].width, 30);
    EXPECT_EQ(item.bitmaps[0].height, 22);
    EXPECT_EQ(item.bitmaps[1].width, 60);
    EXPECT_EQ(item.bitmaps[1].height, 44);
}

TEST_F(TemplateImageTest, AWidthBetweenPointsIsRoundedUpInBoth)
{
    const auto& item = shown(TestPicture(30.2));
    EXPECT_EQ(item.width, 31.0);
    EXPECT_EQ(item.bitmaps[0].width, 31);
    EXPECT_EQ(item.bitmaps[1].width, 62);
}

TEST_F(TemplateImageTest, EveryPixelOfTheMaskIsOneOfTheBitmap)
{
    const auto& item = shown(TestPicture(30.2)); // 31 and 61 pixels wide
    EXPECT_EQ(alphaAt(item.bitmaps[0], 0, 0), 255);
    EXPECT_EQ(alphaAt(item.bitmaps[0], 0, 21), 255);
    EXPECT_EQ(alphaAt(item.bitmaps[0], 1, 21), 0);
    EXPECT_EQ(alphaAt(item.bitmaps[0], 30, 21), 128);
    EXPECT_EQ(alphaAt(item.bitmaps[1], 0, 43), 255);
    EXPECT_EQ(alphaAt(item.bitmaps[1], 60, 43), 128);
    EXPECT_EQ(alphaAt(item.bitmaps[1], 61, 43), 0);
}

} // namespace
} // namespace amperly
