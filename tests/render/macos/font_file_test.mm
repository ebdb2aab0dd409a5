#include "render/font_file.h"

#include "platform/macos/fonts/system_font.h"
#include "tests/platform/macos/fakes/fake_desktop_test.h"
#include "tests/platform/macos/fakes/fake_machine.h"

namespace amperly {
namespace {

// The fake's font: every character 0.6 ems wide, its ink 0.5 wide (the one 0.3) and 0.7 high.
class SystemFontFileTest : public FakeDesktopTest {
protected:
    SystemFontFileTest() { fake_mac::resetMachine(); }

    void TearDown() override
    {
        EXPECT_EQ(fake_mac::audit().coreFoundationObjects, 0);
        EXPECT_THAT(fake_mac::audit().violations, testing::IsEmpty());
        fake_mac::resetMachine();
        FakeDesktopTest::TearDown();
    }

    FontFile font = *FontFile::open(*SystemFont().face(FontWeight::Regular, U"0123456789"));
};

TEST_F(SystemFontFileTest, TheSystemHasACharacterForEverything)
{
    EXPECT_TRUE(font.has(U'0'));
    EXPECT_TRUE(font.has(U'\u0663'));
}

TEST_F(SystemFontFileTest, MeasuresAreInEms)
{
    EXPECT_NEAR(font.advance(U'0'), 0.6, 1e-9);
    EXPECT_NEAR(font.inkWidth(U'0'), 0.5, 1e-9);
    EXPECT_NEAR(font.inkWidth(U'1'), 0.3, 1e-9);
    EXPECT_NEAR(font.rise(U'0'), 0.7, 1e-9);
}

TEST_F(SystemFontFileTest, ADrawingIsJustAsLargeAsItsInk)
{
    const auto drawing = font.draw(U'0', 20.0);
    ASSERT_TRUE(drawing);
    EXPECT_EQ(drawing->advance, 12);
    EXPECT_EQ(drawing->left, 1);
    EXPECT_EQ(drawing->top, 14);
    EXPECT_EQ(drawing->mask.width, 10);
    EXPECT_EQ(drawing->mask.height, 14);
    EXPECT_THAT(drawing->mask.coverage, testing::Each(255));
}

TEST_F(SystemFontFileTest, ASpaceHasAWidthAndNoInk)
{
    const auto drawing = font.draw(U' ', 20.0);
    ASSERT_TRUE(drawing);
    EXPECT_EQ(drawing->advance, 12);
    EXPECT_EQ(drawing->mask.width, 0);
}

TEST_F(SystemFontFileTest, WithoutMemoryThereIsNoDrawing)
{
    fake_mac::machine().allocationsUntilFailure = 0;
    EXPECT_FALSE(font.draw(U'0', 20.0));
}

TEST_F(SystemFontFileTest, TheWeightsAreFacesOfTheirOwn)
{
    EXPECT_NE(SystemFont().face(FontWeight::Regular, U"0"), SystemFont().face(FontWeight::Medium, U"0"));
    EXPECT_TRUE(FontFile::open(*SystemFont().face(FontWeight::Medium, U"0")));
}

} // namespace
} // namespace amperly
