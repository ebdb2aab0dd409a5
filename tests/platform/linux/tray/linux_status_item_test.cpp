#include "platform/linux/tray/linux_status_item.h"

#include "tests/platform/linux/tray/status_item_fixture.h"
#include "tests/support/allocation_count.h"
#include "tests/support/run_until.h"

#include <gmock/gmock.h>

namespace amperly {
namespace {

using test::Heard;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

class LinuxStatusItemTest : public test::StatusItemFixture { };

TEST_F(LinuxStatusItemTest, ItemSaysWhatItIs)
{
    startOn("waybar");
    const std::string& name = onlyItem();
    EXPECT_EQ(panel->textProperty(name, "Category"), "Hardware");
    EXPECT_EQ(panel->textProperty(name, "Id"), "amperly");
    EXPECT_EQ(panel->textProperty(name, "Title"), "Amperly");
    EXPECT_EQ(panel->textProperty(name, "Status"), "Active");
    EXPECT_EQ(panel->textProperty(name, "IconName"), "");
    EXPECT_EQ(panel->textProperty(name, "IconAccessibleDesc"), "Mac using 12.3 watts");
    int isMenu = 1;
    sd_bus_message_read(panel->property(name, "ItemIsMenu").get(), "b", &isMenu);
    EXPECT_EQ(isMenu, 0);
}

TEST_F(LinuxStatusItemTest, AllPropertiesComeAtOnce)
{
    startOn("waybar");
    EXPECT_THAT(panel->propertyNames(onlyItem()),
        IsSupersetOf({"Category", "Id", "Title", "Status", "ItemIsMenu", "Menu", "IconName", "IconPixmap",
            "IconThemePath", "ToolTip", "IconAccessibleDesc"}));
}

TEST_F(LinuxStatusItemTest, WhatTheItemNeverHasIsToldOnlyToThoseWhoAskForIt)
{
    startOn("waybar");
    const std::string name = onlyItem();
    for (const char* property : {"OverlayIconPixmap", "AttentionIconPixmap", "AttentionIconName"}) {
        EXPECT_THAT(panel->propertyNames(name), Not(Contains(property)));
        EXPECT_NE(panel->property(name, property), nullptr);
    }
}

TEST_F(LinuxStatusItemTest, WideHostThatTakesTheLargestPixmapGetsTheFittingOneOnly)
{
    startOn("waybar");
    const std::vector<test::Pixmap> pixmaps = panel->pixmaps(onlyItem());
    ASSERT_EQ(pixmaps.size(), 1U);
    EXPECT_EQ(pixmaps[0].width, 40);
    EXPECT_EQ(pixmaps[0].height, 24);
}

TEST_F(LinuxStatusItemTest, WideHostGetsTheWidePictureBeforeTheSquares)
{
    startOn("mate-panel");
    const std::vector<test::Pixmap> pixmaps = panel->pixmaps(onlyItem());
    ASSERT_EQ(pixmaps.size(), 4U);
    EXPECT_EQ(pixmaps[0].width, 40);
    EXPECT_EQ(pixmaps[0].height, 24);
    EXPECT_EQ(pixmaps[1].width, 80);
    EXPECT_EQ(pixmaps[1].height, 48);
    EXPECT_EQ(pixmaps[2].width, 22);
    EXPECT_EQ(pixmaps[3].width, 44);
}

TEST_F(LinuxStatusItemTest, PixelsAreStraightInkInNetworkOrder)
{
    startOn("mate-panel");
    const std::vector<test::Pixmap> pixmaps = panel->pixmaps(onlyItem());
    EXPECT_THAT(pixmaps[0].firstPixel(), ElementsAre(104, 0x10, 0x20, 0x30));
    EXPECT_THAT(pixmaps[2].firstPixel(), ElementsAre(4, 0x10, 0x20, 0x30));
}

TEST_F(LinuxStatusItemTest, ToolTipIsMarkupOfBothTexts)
{
    toolTip = "5 < 6";
    spokenLabel = "a & b";
    startOn("waybar");
    EXPECT_EQ(panel->toolTip(onlyItem()), (test::ToolTip{"", "5 &lt; 6", "a &amp; b"}));
}

TEST_F(LinuxStatusItemTest, ToolTipIsLeftAloneWhereItIsReadAsPlainText)
{
    toolTip = "5 < 6";
    startOn("lxqt-panel");
    EXPECT_EQ(panel->toolTip(onlyItem()).title, "5 < 6");
}

TEST_F(LinuxStatusItemTest, ToolTipsTitleIsLeftAloneWhereOnlyTheTextIsMarkup)
{
    toolTip = "5 < 6";
    spokenLabel = "a & b";
    startOn("panel-2-systray");
    EXPECT_EQ(panel->toolTip(onlyItem()), (test::ToolTip{"", "5 < 6", "a &amp; b"}));
}

TEST_F(LinuxStatusItemTest, WithoutAToolTipThereIsNone)
{
    toolTip.reset();
    startOn("waybar");
    EXPECT_EQ(panel->toolTip(onlyItem()), (test::ToolTip{"", "", ""}));
}

TEST_F(LinuxStatusItemTest, NothingIsSaidDrawnOrAllocatedWhenNothingChanged)
{
    startOn("waybar");
    static_cast<void>(panel->pixmaps(onlyItem()));
    static_cast<void>(panel->heard());
    const int drawings = picture.drawings;
    const std::optional<std::string_view> sameToolTip = toolTip;
    const AllocationCount count;
    item->show(picture, sameToolTip, spokenLabel);
    EXPECT_EQ(count.value(), 0);
    EXPECT_EQ(picture.drawings, drawings);
    EXPECT_THAT(panel->heard(), IsEmpty());
}

TEST_F(LinuxStatusItemTest, ChangedPictureIsSaidOnce)
{
    startOn("waybar");
    const std::string name = onlyItem();
    static_cast<void>(panel->heard());
    show({"9"});
    EXPECT_THAT(panel->heard(), ElementsAre(Heard{name, "NewIcon"}));
}

TEST_F(LinuxStatusItemTest, PictureThatOnlySeemsToDifferIsNotSaid)
{
    startOn("waybar");
    static_cast<void>(onlyItem());
    static_cast<void>(panel->heard());
    show({"45.6"}); // another key, the same pixels
    EXPECT_THAT(panel->heard(), IsEmpty());
}

TEST_F(LinuxStatusItemTest, ChangedTextIsSaidWithoutThePicture)
{
    startOn("waybar");
    const std::string name = onlyItem();
    static_cast<void>(panel->heard());
    toolTip = "Mac using 12.4 W";
    redraw();
    EXPECT_THAT(panel->heard(), ElementsAre(Heard{name, "NewToolTip"}));
    EXPECT_EQ(panel->toolTip(name).title, "Mac using 12.4 W");
}

TEST_F(LinuxStatusItemTest, HostThatAsksForEverythingAnywayIsToldOnce)
{
    startOn("panel-2-systray");
    const std::string name = onlyItem();
    static_cast<void>(panel->heard());
    toolTip = "Mac using 9 W";
    show({"9"});
    EXPECT_THAT(panel->heard(), ElementsAre(Heard{name, "NewIcon"}));
}

TEST_F(LinuxStatusItemTest, HostThatAsksForWhatChangedIsToldOfEach)
{
    startOn("kded5");
    const std::string name = onlyItem();
    static_cast<void>(panel->heard());
    toolTip = "Mac using 9 W";
    show({"9"});
    EXPECT_THAT(panel->heard(), ElementsAre(Heard{name, "NewIcon"}, Heard{name, "NewToolTip"}));
}

TEST_F(LinuxStatusItemTest, HostWithoutToolTipsIsNotToldOfThem)
{
    startOn("swaybar");
    static_cast<void>(onlyItem());
    static_cast<void>(panel->heard());
    toolTip = "Mac using 12.4 W";
    redraw();
    EXPECT_THAT(panel->heard(), IsEmpty());
}

TEST_F(LinuxStatusItemTest, RestartedWatcherGetsTheItemAgain)
{
    startOn("waybar");
    static_cast<void>(onlyItem());
    panel.reset();
    ASSERT_TRUE(runUntil([&] { return fallback.shown; }));
    panel.emplace(daemon.address());
    EXPECT_EQ(panel->pixmaps(onlyItem()).size(), 1U);
    EXPECT_TRUE(runUntil([&] { return !fallback.shown; }));
    EXPECT_EQ(ink.panels, 2);
}

TEST_F(LinuxStatusItemTest, NothingIsSaidWhileThereIsNoWatcher)
{
    startOn("waybar");
    const std::string name = onlyItem();
    panel->stopWatching();
    ASSERT_TRUE(runUntil([&] { return fallback.shown; }));
    static_cast<void>(panel->heard());
    toolTip = "Mac using 9 W";
    show({"9"});
    EXPECT_THAT(panel->heard(), IsEmpty());
}

TEST_F(LinuxStatusItemTest, WatcherThatComesBackUnderItsOldNameGetsTheItemAgain)
{
    startOn("waybar");
    const std::string name = onlyItem();
    panel->stopWatching();
    ASSERT_TRUE(runUntil([&] { return fallback.shown; }));
    panel->watchAgain();
    ASSERT_TRUE(panel->sees(2));
    EXPECT_THAT(panel->items(), ElementsAre(name, name));
    static_cast<void>(panel->heard());
    show({"9"});
    EXPECT_THAT(panel->heard(), ElementsAre(Heard{name, "NewIcon"}));
}

TEST_F(LinuxStatusItemTest, PictureThatChangedBetweenTwoPanelsIsTheNewOneOnTheSecond)
{
    startOn("waybar");
    static_cast<void>(onlyItem());
    panel.reset();
    ASSERT_TRUE(runUntil([&] { return fallback.shown; }));
    show({"7"});
    EXPECT_EQ(fallback.reading, "7");
    panel.emplace(daemon.address());
    EXPECT_EQ(panel->pixmaps(onlyItem())[0].bytes[0], 101);
}

TEST_F(LinuxStatusItemTest, WatcherThatComesLaterIsFound)
{
    startUnder("waybar");
    redraw();
    ASSERT_TRUE(runUntil([&] { return fallback.shown; }));
    panel.emplace(daemon.address());
    static_cast<void>(onlyItem());
    EXPECT_TRUE(runUntil([&] { return !fallback.shown; }));
}

TEST_F(LinuxStatusItemTest, FallbackIsNotShownWhereThereIsAPanel)
{
    startOn("waybar");
    static_cast<void>(onlyItem());
    EXPECT_EQ(fallback.drawings, 0);
}

TEST_F(LinuxStatusItemTest, WatcherThatNobodyShowsItemsForLeavesTheFallback)
{
    panel.emplace(daemon.address(), false);
    startUnder("kded5");
    ASSERT_TRUE(runUntil([&] { return fallback.shown; }));
    panel->setHasHost(true);
    EXPECT_TRUE(runUntil([&] { return !fallback.shown; }));
    panel->setHasHost(false);
    EXPECT_TRUE(runUntil([&] { return fallback.shown; }));
}

TEST_F(LinuxStatusItemTest, ItemJoinsAWatcherOnceThereIsAHostThatWillHearOfIt)
{
    panel.emplace(daemon.address(), false);
    startUnder("waybar");
    ASSERT_TRUE(runUntil([&] { return fallback.shown; }));
    EXPECT_TRUE(panel->items().empty());
    panel->setHasHost(true);
    EXPECT_TRUE(panel->sees(1));
    panel->setHasHost(false);
    ASSERT_TRUE(runUntil([&] { return fallback.shown; }));
    panel->setHasHost(true);
    ASSERT_TRUE(runUntil([&] { return !fallback.shown; }));
    EXPECT_EQ(panel->items().size(), 1U) << "a watcher keeps those who are with it";
}

TEST_F(LinuxStatusItemTest, FallbackIsOnlyTroubledByChanges)
{
    startUnder("waybar");
    ASSERT_TRUE(runUntil([&] { return fallback.shown; }));
    const int drawings = fallback.drawings;
    redraw();
    EXPECT_EQ(fallback.drawings, drawings);
    show({"7"});
    EXPECT_EQ(fallback.drawings, drawings + 1);
    fallback.wantPicture();
    EXPECT_EQ(fallback.drawings, drawings + 2);
}

TEST_F(LinuxStatusItemTest, LeftClickHasNoAnchorWhereCoordinatesMeanNothing)
{
    startOn("waybar");
    panel->click(onlyItem(), "Activate", 11, 12);
    ASSERT_TRUE(runUntil([&] { return clicks.size() == 1; }));
    EXPECT_EQ(clicks[0].button, ClickButton::Left);
    EXPECT_EQ(clicks[0].anchor, std::nullopt);
}

TEST_F(LinuxStatusItemTest, LeftClickHasAnAnchorWhereCoordinatesAreTheScreens)
{
    startOn("kded5");
    panel->click(onlyItem(), "Activate", 800, 12);
    ASSERT_TRUE(runUntil([&] { return clicks.size() == 1; }));
    EXPECT_EQ(clicks[0].anchor, (ScreenPoint{800, 12}));
}

TEST_F(LinuxStatusItemTest, ContextMenuIsARightClickAndTheMiddleButtonALeftOne)
{
    startOn("swaybar");
    const std::string& name = onlyItem();
    panel->click(name, "ContextMenu", 1, 2);
    panel->click(name, "SecondaryActivate", 1, 2);
    EXPECT_TRUE(
        panel->ask(name, "/StatusNotifierItem", "org.kde.StatusNotifierItem", "XAyatanaSecondaryActivate",
            [](sd_bus_message* call) { sd_bus_message_append(call, "u", std::uint32_t{0}); }));
    ASSERT_TRUE(runUntil([&] { return clicks.size() == 3; }));
    EXPECT_EQ(clicks[0].button, ClickButton::Right);
    EXPECT_EQ(clicks[1].button, ClickButton::Left);
    EXPECT_EQ(clicks[2].button, ClickButton::Left);
}

TEST_F(LinuxStatusItemTest, ScrollingDoesNothing)
{
    startOn("waybar");
    EXPECT_TRUE(panel->ask(onlyItem(), "/StatusNotifierItem", "org.kde.StatusNotifierItem", "Scroll",
        [](sd_bus_message* call) { sd_bus_message_append(call, "is", 1, "vertical"); }));
    QCoreApplication::processEvents();
    EXPECT_THAT(clicks, IsEmpty());
}

TEST_F(LinuxStatusItemTest, ClickOnTheFallbackIsHandedOn)
{
    startUnder("waybar");
    fallback.click({.button = ClickButton::Right, .anchor = ScreenPoint{3, 4}});
    ASSERT_TRUE(runUntil([&] { return clicks.size() == 1; }));
    EXPECT_EQ(clicks[0].anchor, (ScreenPoint{3, 4}));
}

TEST_F(LinuxStatusItemTest, ActivationTokenIsLeftWhereTheToolkitLooksForIt)
{
    startOn("kded5");
    EXPECT_TRUE(panel->ask(onlyItem(), "/StatusNotifierItem", "org.kde.StatusNotifierItem",
        "ProvideXdgActivationToken",
        [](sd_bus_message* call) { sd_bus_message_append(call, "s", "token-7"); }));
    EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "token-7");
    qunsetenv("XDG_ACTIVATION_TOKEN");
}

TEST_F(LinuxStatusItemTest, MenuIsOpenedByWhoeverKnowsHow)
{
    Menu menu;
    startUnder("waybar");
    item->openMenu(ScreenPoint{1, 2}); // no menu yet
    EXPECT_EQ(menuOpenedAt, std::nullopt);
    item->setMenu(menu);
    item->openMenu(ScreenPoint{5, 6});
    EXPECT_EQ(menuOpenedAt, (ScreenPoint{5, 6}));
    item.reset();
}

TEST_F(LinuxStatusItemTest, BusThatIsNotThereIsToldOnceAndLeavesTheFallback)
{
    daemon.end();
    startUnder("waybar");
    redraw();
    EXPECT_TRUE(fallback.shown);
    EXPECT_EQ(warnings.size(), 1U);
}

TEST_F(LinuxStatusItemTest, BusThatDiesIsToldOnceAndLeavesTheFallback)
{
    startOn("kded5");
    static_cast<void>(onlyItem());
    daemon.end();
    ASSERT_TRUE(runUntil([&] { return fallback.shown; }));
    show({"1", "2"});
    EXPECT_EQ(warnings.size(), 1U);
    EXPECT_EQ(fallback.reading, "1");
}

} // namespace
} // namespace amperly
