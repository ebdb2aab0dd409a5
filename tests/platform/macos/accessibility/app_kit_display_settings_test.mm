#include "platform/macos/accessibility/app_kit_display_settings.h"

#include "tests/platform/macos/fakes/fake_desktop_test.h"

namespace amperly {
namespace {

class AppKitDisplaySettingsTest : public FakeDesktopTest {
protected:
    AppKitDisplaySettings settings;
};

TEST_F(AppKitDisplaySettingsTest, NothingIsAskedForByDefault)
{
    EXPECT_FALSE(settings.reducesMotion());
    EXPECT_FALSE(settings.increasesContrast());
}

TEST_F(AppKitDisplaySettingsTest, EachSettingIsToldApart)
{
    stage.system.reducesMotion = true;
    EXPECT_TRUE(settings.reducesMotion());
    EXPECT_FALSE(settings.increasesContrast());
    stage.system.increasesContrast = true;
    stage.system.reducesMotion = false;
    EXPECT_FALSE(settings.reducesMotion());
    EXPECT_TRUE(settings.increasesContrast());
}

TEST_F(AppKitDisplaySettingsTest, AChangeIsTold)
{
    int changes = 0;
    AppKitDisplaySettings watched;
    watched.onDidChange([&] {
        ++changes;
        EXPECT_TRUE(watched.increasesContrast());
    });
    EXPECT_EQ(stage.observers, 1);
    fake_mac::changeDisplaySettings(false, true);
    EXPECT_EQ(changes, 1);
}

} // namespace
} // namespace amperly
