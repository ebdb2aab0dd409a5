#include "platform/linux/desktop/linux_display_settings.h"

#include "tests/platform/linux/desktop/fake_portal.h"
#include "tests/support/private_bus.h"
#include "tests/support/run_until.h"
#include "tests/support/temporary_folder.h"

namespace amperly {
namespace {

class LinuxDisplaySettingsTest : public testing::Test {
protected:
    void haveAnimations(bool enabled)
    {
        portal.set("org.gnome.desktop.interface", "enable-animations", "b", static_cast<int>(enabled));
    }
    void haveContrast(std::uint32_t contrast)
    {
        portal.set("org.freedesktop.appearance", "contrast", "u", contrast);
    }

    PrivateBus daemon;
    FakePortal portal{daemon.address()};
    std::unique_ptr<BusConnection> connection = BusConnection::open(daemon.address());
    TemporaryFolder configuration;
};

TEST_F(LinuxDisplaySettingsTest, ADesktopThatSaysNothingMovesAndIsAsUsual)
{
    const LinuxDisplaySettings display(nullptr, configuration.path(), "XFCE");
    EXPECT_FALSE(display.reducesMotion());
    EXPECT_FALSE(display.increasesContrast());
}

TEST_F(LinuxDisplaySettingsTest, APortalThatHasAnimationsOffReducesMotionAndIsFollowed)
{
    haveAnimations(false);
    LinuxDisplaySettings display(connection.get(), configuration.path(), "GNOME");
    EXPECT_TRUE(runUntil([&] { return display.reducesMotion(); }));
    int changes = 0;
    display.onChanged([&] { ++changes; });
    haveAnimations(true);
    EXPECT_TRUE(runUntil([&] { return changes > 0; }));
    EXPECT_FALSE(display.reducesMotion());
}

TEST_F(LinuxDisplaySettingsTest, KdesFactorOfNoneReducesMotionOnKdeAlone)
{
    configuration.write("kdeglobals", "[KDE]\nAnimationDurationFactor=0\n");
    EXPECT_TRUE(LinuxDisplaySettings(nullptr, configuration.path(), "KDE").reducesMotion());
    EXPECT_FALSE(LinuxDisplaySettings(nullptr, configuration.path(), "GNOME").reducesMotion());
    configuration.write("kdeglobals", "[KDE]\nAnimationDurationFactor=1\n");
    EXPECT_FALSE(LinuxDisplaySettings(nullptr, configuration.path(), "KDE").reducesMotion());
}

TEST_F(LinuxDisplaySettingsTest, APortalThatWantsHigherContrastIsFollowed)
{
    haveContrast(1);
    LinuxDisplaySettings display(connection.get(), configuration.path(), "GNOME");
    EXPECT_TRUE(runUntil([&] { return display.increasesContrast(); }));
    int changes = 0;
    display.onChanged([&] { ++changes; });
    haveContrast(0);
    EXPECT_TRUE(runUntil([&] { return changes > 0; }));
    EXPECT_FALSE(display.increasesContrast());
    EXPECT_FALSE(display.reducesMotion());
}

TEST_F(LinuxDisplaySettingsTest, NewsThatAreNoneAreNotTold)
{
    haveContrast(1);
    haveAnimations(true);
    LinuxDisplaySettings display(connection.get(), configuration.path(), "GNOME");
    ASSERT_TRUE(runUntil([&] { return display.increasesContrast(); }));
    int changes = 0;
    display.onChanged([&] { ++changes; });
    haveContrast(1);
    haveAnimations(true);
    haveAnimations(false); // arrives after them
    EXPECT_TRUE(runUntil([&] { return display.reducesMotion(); }));
    EXPECT_EQ(changes, 1);
}

TEST_F(LinuxDisplaySettingsTest, AnAnswerOfAnotherTypeIsNone)
{
    portal.set("org.freedesktop.appearance", "contrast", "s", "high");
    LinuxDisplaySettings display(connection.get(), configuration.path(), "GNOME");
    ASSERT_TRUE(runUntil([&] { return portal.questions() == 2; }));
    haveContrast(1);
    EXPECT_TRUE(runUntil([&] { return display.increasesContrast(); }));
}

} // namespace
} // namespace amperly
