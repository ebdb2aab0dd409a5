#include "platform/linux/tray/host_profile.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(HostProfileTest, WaybarShowsWidePictures)
{
    EXPECT_EQ(hostProfile("waybar", CurrentDesktop("sway")).drawing, ItemDrawing::Wide);
}

TEST(HostProfileTest, UnknownHostOnUnknownDesktopIsTrustedWithAWidePicture)
{
    EXPECT_EQ(hostProfile("somebar", CurrentDesktop("")).drawing, ItemDrawing::Wide);
    EXPECT_EQ(hostProfile("", CurrentDesktop("")).drawing, ItemDrawing::Wide);
}

TEST(HostProfileTest, XfcePluginIsKnownWhateverItsNumber)
{
    EXPECT_EQ(hostProfile("panel-2-systray", CurrentDesktop("")).drawing, ItemDrawing::Tiles);
    EXPECT_EQ(hostProfile("panel-10-systra", CurrentDesktop("")),
        hostProfile("panel-2-systray", CurrentDesktop(""))); // cut at 15
    EXPECT_TRUE(hostProfile("panel-2-systray", CurrentDesktop("")).lastRegisteredFirst);
    EXPECT_TRUE(hostProfile("panel-2-systray", CurrentDesktop("")).takesSeveralOfAConnection);
}

TEST(HostProfileTest, PlasmaKeepsTheOrderOfRegistration)
{
    EXPECT_EQ(hostProfile("kded5", CurrentDesktop("KDE")).drawing, ItemDrawing::Tiles);
    EXPECT_FALSE(hostProfile("kded5", CurrentDesktop("KDE")).lastRegisteredFirst);
}

TEST(HostProfileTest, SwaybarFillsItsTrayFromTheRight)
{
    EXPECT_EQ(hostProfile("swaybar", CurrentDesktop("sway")).drawing, ItemDrawing::Tiles);
    EXPECT_TRUE(hostProfile("swaybar", CurrentDesktop("sway")).lastRegisteredFirst);
}

TEST(HostProfileTest, OnlyGnomeGetsALabel)
{
    EXPECT_EQ(hostProfile("gnome-shell", CurrentDesktop("")).drawing, ItemDrawing::Labelled);
    EXPECT_NE(hostProfile("mate-panel", CurrentDesktop("MATE")).drawing, ItemDrawing::Labelled);
}

TEST(HostProfileTest, ProcessCountsBeforeTheDesktop)
{
    EXPECT_EQ(hostProfile("waybar", CurrentDesktop("KDE")), hostProfile("waybar", CurrentDesktop("")));
}

TEST(HostProfileTest, DesktopCountsWhereTheProcessSaysNothing)
{
    EXPECT_EQ(hostProfile("", CurrentDesktop("XFCE")), hostProfile("panel-2-systray", CurrentDesktop("")));
    EXPECT_EQ(hostProfile("python3", CurrentDesktop("LXQt")), hostProfile("lxqt-panel", CurrentDesktop("")));
}

TEST(HostProfileTest, EveryWordOfTheDesktopsListCounts)
{
    EXPECT_EQ(
        hostProfile("", CurrentDesktop("ubuntu:GNOME")), hostProfile("gnome-shell", CurrentDesktop("")));
    EXPECT_EQ(hostProfile("", CurrentDesktop("GNOME:")), hostProfile("gnome-shell", CurrentDesktop("")));
}

TEST(HostProfileTest, OnlySwaybarWantsPremultipliedColours)
{
    EXPECT_EQ(hostProfile("swaybar", CurrentDesktop("sway")).pixmapAlpha, PixmapAlpha::Premultiplied);
    EXPECT_EQ(hostProfile("waybar", CurrentDesktop("sway")).pixmapAlpha, PixmapAlpha::Straight);
    EXPECT_EQ(hostProfile("plasmashell", CurrentDesktop("KDE")).pixmapAlpha, PixmapAlpha::Straight);
    EXPECT_EQ(hostProfile("somebar", CurrentDesktop("")).pixmapAlpha, PixmapAlpha::Straight);
}

TEST(HostProfileTest, InkFollowsThePanelsGround)
{
    for (const char* const alwaysDark : {"gnome-shell", "waybar", "swaybar"})
        EXPECT_EQ(hostProfile(alwaysDark, CurrentDesktop("")).ink, PanelInk::White) << alwaysDark;
    for (const char* const drawnByTheToolkit : {"plasmashell", "kded5", "lxqt-panel"})
        EXPECT_EQ(hostProfile(drawnByTheToolkit, CurrentDesktop("")).ink, PanelInk::Palette)
            << drawnByTheToolkit;
    for (const char* const themed : {"mate-panel", "xfce4-panel", "panel-2-systray", "xapp-sn-watcher"})
        EXPECT_EQ(hostProfile(themed, CurrentDesktop("")).ink, PanelInk::ColorScheme) << themed;
    for (const char* const unknown : {"somebar", ""})
        EXPECT_EQ(hostProfile(unknown, CurrentDesktop("")).ink, PanelInk::ColorScheme)
            << '"' << unknown << '"';
}

TEST(HostProfileTest, CoordinatesAreTrustedWhereTheyAreTheScreens)
{
    EXPECT_TRUE(hostProfile("panel-2-systray", CurrentDesktop("")).globalCoordinates);
    EXPECT_TRUE(hostProfile("lxqt-panel", CurrentDesktop("")).globalCoordinates);
    EXPECT_TRUE(hostProfile("plasmashell", CurrentDesktop("")).globalCoordinates);
    EXPECT_TRUE(hostProfile("swaybar", CurrentDesktop("")).globalCoordinates);
    EXPECT_FALSE(hostProfile("waybar", CurrentDesktop("")).globalCoordinates);
    EXPECT_FALSE(hostProfile("mate-panel", CurrentDesktop("")).globalCoordinates);
}

} // namespace
} // namespace amperly
