#include "platform/macos/shell/app_kit_desktop.h"

#include "platform/macos/shell/accessory_application.h"
#include "tests/platform/macos/fakes/fake_desktop_test.h"

namespace amperly {
namespace {

class AppKitDesktopTest : public FakeDesktopTest {
protected:
    AccessoryApplication application;
    AppKitDesktop desktop{application};
};

TEST_F(AppKitDesktopTest, AddressesOpenInTheBrowser)
{
    desktop.openAddress("https://example.org/amperly");
    EXPECT_THAT(stage.application.opened, testing::ElementsAre("https://example.org/amperly"));
}

TEST_F(AppKitDesktopTest, WhatIsNoAddressOpensNothing)
{
    desktop.openAddress("not an address");
    EXPECT_THAT(stage.application.opened, testing::IsEmpty());
}

TEST_F(AppKitDesktopTest, ALogLineIsNeverTakenForAFormat)
{
    desktop.log("Amperly: couldn't enable launch at login: 100 %@");
    EXPECT_EQ(stage.application.log, "Amperly: couldn't enable launch at login: 100 %@\n");
}

TEST_F(AppKitDesktopTest, ReopeningReachesTheHandler)
{
    int reopenings = 0;
    desktop.onReopen([&] { ++reopenings; });
    EXPECT_FALSE(fake_mac::reopenApplication());
    EXPECT_EQ(reopenings, 1);
}

TEST_F(AppKitDesktopTest, ActivatingIgnoresOtherApplications)
{
    desktop.activate();
    EXPECT_EQ(stage.application.activations, 1);
}

TEST_F(AppKitDesktopTest, QuittingTerminatesTheApplication)
{
    desktop.quit();
    EXPECT_EQ(stage.application.terminations, 1);
}

TEST_F(AppKitDesktopTest, TheScreensHeightIsWhatMenuBarAndDockLeave)
{
    stage.system.visibleScreenHeight = 875.0;
    EXPECT_EQ(desktop.visibleScreenHeight(), 875);
    stage.system.visibleScreenHeight.reset();
    EXPECT_EQ(desktop.visibleScreenHeight(), std::nullopt);
}

TEST_F(AppKitDesktopTest, OnlyTheSystemsApplicationsFolderCounts)
{
    const auto isInstalledAt = [this](const char* path) {
        stage.system.bundlePath = path;
        return desktop.isInstalled();
    };
    EXPECT_TRUE(isInstalledAt("/Applications/Amperly.app"));
    EXPECT_TRUE(isInstalledAt("/Applications/Utilities/Amperly.app"));
    EXPECT_FALSE(isInstalledAt("/Users/ada/Applications/Amperly.app"));
    EXPECT_FALSE(isInstalledAt("/Applications.old/Amperly.app"));
    EXPECT_FALSE(isInstalledAt("/Volumes/Amperly/Amperly.app"));
}

TEST_F(AppKitDesktopTest, TheVersionIsTheBundlesIfItIsText)
{
    EXPECT_EQ(desktop.shortVersion(), "1.2.3");
    stage.system.bundleVersion = 3;
    EXPECT_EQ(desktop.shortVersion(), std::nullopt);
    stage.system.bundleVersion = std::monostate();
    EXPECT_EQ(desktop.shortVersion(), std::nullopt);
}

} // namespace
} // namespace amperly
