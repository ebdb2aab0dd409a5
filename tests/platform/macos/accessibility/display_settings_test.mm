#include "platform/macos/accessibility/display_settings.h"

#include "tests/platform/macos/fakes/fake_desktop_test.h"

namespace amperly {
namespace {

class DisplaySettingsTest : public FakeDesktopTest {
protected:
    DisplaySettings settings;
};

TEST_F(DisplaySettingsTest, NothingIsAskedForByDefault)
{
    EXPECT_FALSE(settings.reducesMotion());
    EXPECT_FALSE(settings.increasesContrast());
}

TEST_F(DisplaySettingsTest, EachSettingIsToldApart)
{
    stage.system.reducesMotion = true;
    EXPECT_TRUE(settings.reducesMotion());
    EXPECT_FALSE(settings.increasesContrast());
    stage.system.increasesContrast = true;
    stage.system.reducesMotion = false;
    EXPECT_FALSE(settings.reducesMotion());
    EXPECT_TRUE(settings.increasesContrast());
}

} // namespace
} // namespace amperly
