#include "platform/linux/tray/host_profile.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(HostProfileTest, WaybarShowsWidePictures)
{
    EXPECT_EQ(hostProfile("waybar", "sway").drawing, ItemDrawing::Wide);
}

TEST(HostProfileTest, UnknownHostOnUnknownDesktopIsTrustedWithAWidePicture)
{
    EXPECT_EQ(hostProfile("somebar", "").drawing, ItemDrawing::Wide);
    EXPECT_EQ(hostProfile("", "").drawing, ItemDrawing::Wide);
}

TEST(HostProfileTest, XfcePluginIsKnownWhateverItsNumber)
{
    EXPECT_EQ(hostProfile("panel-2-systray", "").drawing, ItemDrawing::Tiles);
    EXPECT_EQ(hostProfile("panel-10-systra", ""), hostProfile("panel-2-systray", "")); // cut at 15
    EXPECT_TRUE(hostProfile("panel-2-systray", "").lastRegisteredFirst);
    EXPECT_TRUE(hostProfile("panel-2-systray", "").takesSeveralOfAConnection);
}

TEST(HostProfileTest, PlasmaKeepsTheOrderOfRegistration)
{
    EXPECT_EQ(hostProfile("kded5", "KDE").drawing, ItemDrawing::Tiles);
    EXPECT_FALSE(hostProfile("kded5", "KDE").lastRegisteredFirst);
}

TEST(HostProfileTest, SwaybarFillsItsTrayFromTheRight)
{
    EXPECT_EQ(hostProfile("swaybar", "sway").drawing, ItemDrawing::Tiles);
    EXPECT_TRUE(hostProfile("swaybar", "sway").lastRegisteredFirst);
}

TEST(HostProfileTest, OnlyGnomeGetsALabel)
{
    EXPECT_EQ(hostProfile("gnome-shell", "").drawing, ItemDrawing::Labelled);
    EXPECT_NE(hostProfile("mate-panel", "MATE").drawing, ItemDrawing::Labelled);
}

TEST(HostProfileTest, ProcessCountsBeforeTheDesktop)
{
    EXPECT_EQ(hostProfile("waybar", "KDE"), hostProfile("waybar", ""));
}

TEST(HostProfileTest, DesktopCountsWhereTheProcessSaysNothing)
{
    EXPECT_EQ(hostProfile("", "XFCE"), hostProfile("panel-2-systray", ""));
    EXPECT_EQ(hostProfile("python3", "LXQt"), hostProfile("lxqt-panel", ""));
}

TEST(HostProfileTest, EveryWordOfTheDesktopsListCounts)
{
    EXPECT_EQ(hostProfile("", "ubuntu:GNOME"), hostProfile("gnome-shell", ""));
    EXPECT_EQ(hostProfile("", "GNOME:"), hostProfile("gnome-shell", ""));
}

TEST(HostProfileTest, OnlySwaybarWantsPremultipliedColours)
{
    EXPECT_EQ(hostProfile("swaybar", "sway").pixmapAlpha, PixmapAlpha::Premultiplied);
    EXPECT_EQ(hostProfile("waybar", "sway").pixmapAlpha, PixmapAlpha::Straight);
    EXPECT_EQ(hostProfile("plasmashell", "KDE").pixmapAlpha, PixmapAlpha::Straight);
    EXPECT_EQ(hostProfile("somebar", "").pixmapAlpha, PixmapAlpha::Straight);
}

TEST(HostProfileTest, InkFollowsThePanelsGround)
{
    for (const char* const alwaysDark : {"gnome-shell", "waybar", "swaybar"})
        EXPECT_EQ(hostProfile(alwaysDark, "").ink, PanelInk::White) << alwaysDark;
    for (const char* const drawnByTheToolkit : {"plasmashell", "kded5", "lxqt-panel"})
        EXPECT_EQ(hostProfile(drawnByTheToolkit, "").ink, PanelInk::Palette) << drawnByTheToolkit;
    for (const char* const themed : {"mate-panel", "xfce4-panel", "panel-2-systray", "xapp-sn-watcher"})
        EXPECT_EQ(hostProfile(themed, "").ink, PanelInk::ColorScheme) << themed;
    for (const char* const unknown : {"somebar", ""})
        EXPECT_EQ(hostProfile(unknown, "").ink, PanelInk::ColorScheme) << '"' << unknown << '"';
}

TEST(HostProfileTest, CoordinatesAreTrustedWhereTheyAreTheScreens)
{
    EXPECT_TRUE(hostProfile("panel-2-systray", "").globalCoordinates);
    EXPECT_TRUE(hostProfile("lxqt-panel", "").globalCoordinates);
    EXPECT_TRUE(hostProfile("plasmashell", "").globalCoordinates);
    EXPECT_TRUE(hostProfile("swaybar", "").globalCoordinates);
    EXPECT_FALSE(hostProfile("waybar", "").globalCoordinates);
    EXPECT_FALSE(hostProfile("mate-panel", "").globalCoordinates);
}

} // namespace
} // namespace amperly
