#include "render/look/rounded_font.h"

#include "tests/platform/macos/fakes/fake_desktop_test.h"

namespace amperly {
namespace {

class RoundedFontTest : public FakeDesktopTest { };

TEST_F(RoundedFontTest, TheSystemsRoundedDesignHasAFamily)
{
    EXPECT_EQ(roundedFontFamily(), ".AppleSystemUIFontRounded");
}

TEST_F(RoundedFontTest, ASystemWithoutOneHasNone)
{
    stage.system.roundedFamily.clear();
    EXPECT_EQ(roundedFontFamily(), "");
}

} // namespace
} // namespace amperly
