#include "platform/linux/desktop/linux_display_settings.h"

#include "tests/platform/linux/desktop/fake_portal.h"
#include "tests/support/as_ordinary_user.h"
#include "tests/support/private_bus.h"
#include "tests/support/run_until.h"
#include "tests/support/temporary_folder.h"

#include <sys/stat.h>

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
    const LinuxDisplaySettings display(nullptr, configuration.path(), CurrentDesktop("XFCE"));
    EXPECT_FALSE(display.reducesMotion());
    EXPECT_FALSE(display.increasesContrast());
}

TEST_F(LinuxDisplaySettingsTest, APortalThatHasAnimationsOffReducesMotionAndIsFollowed)
{
    haveAnimations(false);
    LinuxDisplaySettings display(connection.get(), configuration.path(), CurrentDesktop("GNOME"));
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
    EXPECT_TRUE(LinuxDisplaySettings(nullptr, configuration.path(), CurrentDesktop("KDE")).reducesMotion());
    EXPECT_FALSE(
        LinuxDisplaySettings(nullptr, configuration.path(), CurrentDesktop("GNOME")).reducesMotion());
    configuration.write("kdeglobals", "[KDE]\nAnimationDurationFactor=1\n");
    EXPECT_FALSE(LinuxDisplaySettings(nullptr, configuration.path(), CurrentDesktop("KDE")).reducesMotion());
}

TEST_F(LinuxDisplaySettingsTest, APortalThatWantsHigherContrastIsFollowed)
{
    haveContrast(1);
    LinuxDisplaySettings display(connection.get(), configuration.path(), CurrentDesktop("GNOME"));
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
    LinuxDisplaySettings display(connection.get(), configuration.path(), CurrentDesktop("GNOME"));
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
    LinuxDisplaySettings display(connection.get(), configuration.path(), CurrentDesktop("GNOME"));
    ASSERT_TRUE(runUntil([&] { return portal.questions() == 2; }));
    haveContrast(1);
    EXPECT_TRUE(runUntil([&] { return display.increasesContrast(); }));
}

TEST_F(LinuxDisplaySettingsTest, WhateverIsInThePlaceOfKdesFileIsNoReasonToStop)
{
    const LinuxDisplaySettings display(nullptr, configuration.path(), CurrentDesktop("KDE"));
    const std::string path = configuration / "kdeglobals";
    EXPECT_FALSE(display.reducesMotion()) << "missing";
    std::filesystem::create_directory(path);
    EXPECT_FALSE(display.reducesMotion()) << "a folder";
    std::filesystem::remove(path);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_FALSE(display.reducesMotion()) << "a pipe";
    std::filesystem::remove(path);
    std::filesystem::create_symlink("/dev/zero", path);
    EXPECT_FALSE(display.reducesMotion()) << "an endless device";
    std::filesystem::remove(path);
    configuration.write("kdeglobals", "[KDE]\nAnimationDurationFactor=0\n");
    const AsOrdinaryUser user(configuration);
    ASSERT_EQ(chmod(path.c_str(), 0), 0);
    EXPECT_FALSE(display.reducesMotion()) << "without permission";
    ASSERT_EQ(chmod(path.c_str(), 0600), 0);
    EXPECT_TRUE(display.reducesMotion());
}

TEST(KdeAnimationsTest, TheFactorStandsInTheGroupOfTheDesktop)
{
    EXPECT_EQ(kdeAnimationFactor("[General]\nfont=x\n\n[KDE]\nAnimationDurationFactor=0\n"), 0.0);
    EXPECT_EQ(kdeAnimationFactor("[KDE]\nSingleClick=false\nAnimationDurationFactor=0.5"), 0.5);
}

TEST(KdeAnimationsTest, TheSameKeyInAnotherGroupIsAnotherSetting)
{
    EXPECT_EQ(kdeAnimationFactor("[KDE]\n[Other]\nAnimationDurationFactor=0\n"), std::nullopt);
}

TEST(KdeAnimationsTest, GroupsWithinGroupsAreOtherGroups)
{
    // What a file of the desktop's looks like: groups within groups, keys with options.
    EXPECT_EQ(kdeAnimationFactor("[Colors:Header][Inactive]\nBackgroundNormal=1,2,3\n\n[General]\n"
                                 "Terminal[$e]=$HOME/x\n[KDE]\nLookAndFeelPackage=y\n"
                                 "AnimationDurationFactor=0.5\n[KDE][Sub]\nAnimationDurationFactor=0\n"),
        0.5);
}

TEST(KdeAnimationsTest, BlanksAroundTheNumberDoNotMatter)
{
    EXPECT_EQ(kdeAnimationFactor("[KDE]\r\n AnimationDurationFactor = 0 \r\n"), 0.0);
}

TEST(KdeAnimationsTest, WhatIsNoNumberIsNothing)
{
    for (const char* const text : {"", "[KDE]", "[KDE]\nAnimationDurationFactor=",
             "[KDE]\nAnimationDurationFactor=0x", "AnimationDurationFactor=0"})
        EXPECT_EQ(kdeAnimationFactor(text), std::nullopt) << text;
}

} // namespace
} // namespace amperly
