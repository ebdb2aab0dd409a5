#include "platform/linux/tray/dbus_menu.h"

#include "tests/platform/linux/tray/status_item_fixture.h"
#include "tests/support/run_until.h"

#include <gmock/gmock.h>

namespace amperly {
namespace {

using test::Heard;
using test::MenuLine;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kInterface = "com.canonical.dbusmenu";

class DbusMenuTest : public test::StatusItemFixture {
protected:
    DbusMenuTest()
    {
        load = menu.add({.title = "Mac using: 12.3 W", .enabled = false, .activate = {}});
        charger = menu.add({.title = "Charger: 96 W", .enabled = false, .activate = {}});
        menu.add({.title = {}, .separator = true, .activate = {}});
        settings = menu.add(
            {.title = "Settings\u2026", .shortcut = ',', .activate = [this] { ++settingsOpened; }});
        menu.willOpen = [this] {
            ++openings;
            menu.setTitle(load, "Mac using: " + std::to_string(watts) + " W");
        };
        menu.didClose = [this] { ++closings; };
    }

    ~DbusMenuTest() override { item.reset(); }

    const std::string& startWithMenuOn(const char* process)
    {
        panel.emplace(daemon.address());
        startUnder(process);
        item->setMenu(menu);
        return onlyItem();
    }

    /// The identifier that hosts know an entry by.
    static int identifier(int index) { return index + 1; }

    BusMessage askMenu(const char* member, const std::function<void(sd_bus_message*)>& append)
    {
        return panel->ask(onlyItem(), "/MenuBar", kInterface, member, append);
    }

    Menu menu;
    int load = 0;
    int charger = 0;
    int settings = 0;
    int watts = 12;
    int openings = 0;
    int closings = 0;
    int settingsOpened = 0;
};

TEST(DbusMenuLabelTest, UnderscoreIsNotAShortcut)
{
    EXPECT_EQ(menuLabel("a_b"), "a__b");
    EXPECT_EQ(menuLabel("plain"), "plain");
}

TEST_F(DbusMenuTest, ItemNamesItsMenu)
{
    const std::string& name = startWithMenuOn("waybar");
    const char* path = "";
    const BusMessage reply = panel->property(name, "Menu");
    sd_bus_message_read(reply.get(), "o", &path);
    EXPECT_STREQ(path, "/MenuBar");
}

TEST_F(DbusMenuTest, MenuSaysWhichVersionItSpeaks)
{
    const std::string& name = startWithMenuOn("waybar");
    std::uint32_t version = 0;
    const BusMessage reply = panel->ask(name, "/MenuBar", "org.freedesktop.DBus.Properties", "Get",
        [](sd_bus_message* call) { sd_bus_message_append(call, "ss", kInterface, "Version"); });
    sd_bus_message_read(reply.get(), "v", "u", &version);
    EXPECT_EQ(version, 3U);
}

TEST_F(DbusMenuTest, LayoutHasEveryEntryAsItIs)
{
    menu.setVisible(charger, false);
    const std::string& name = startWithMenuOn("waybar");
    const test::MenuLayout layout = panel->layout(name);
    EXPECT_EQ(layout.rootDisplay, "submenu");
    EXPECT_THAT(layout.lines,
        ElementsAre(MenuLine{1, "", "Mac using: 12.3 W", false, true, {}},
            MenuLine{2, "", "Charger: 96 W", false, false, {}}, MenuLine{3, "separator", "", true, true, {}},
            MenuLine{4, "", "Settings\u2026", true, true, {"Control", "comma"}}));
}

TEST_F(DbusMenuTest, DepthOfNothingHasNoEntries)
{
    startWithMenuOn("waybar");
    const BusMessage reply
        = askMenu("GetLayout", [](sd_bus_message* call) { sd_bus_message_append(call, "iias", 0, 0, 0); });
    sd_bus_message_skip(reply.get(), "u");
    sd_bus_message_enter_container(reply.get(), 'r', "ia{sv}av");
    sd_bus_message_skip(reply.get(), "ia{sv}");
    sd_bus_message_enter_container(reply.get(), 'a', "v");
    EXPECT_GT(sd_bus_message_at_end(reply.get(), 0), 0);
}

TEST_F(DbusMenuTest, LayoutOfAnUnknownEntryIsAnError)
{
    startWithMenuOn("waybar");
    EXPECT_FALSE(
        askMenu("GetLayout", [](sd_bus_message* call) { sd_bus_message_append(call, "iias", 99, -1, 0); }));
}

TEST_F(DbusMenuTest, SinglePropertyIsTheDefaultWhereTheEntrySaysNothing)
{
    startWithMenuOn("waybar");
    const auto get = [&](int entry, const char* name) {
        return askMenu(
            "GetProperty", [&](sd_bus_message* call) { sd_bus_message_append(call, "is", entry, name); });
    };
    const char* text = "";
    int truth = 0;
    const BusMessage type = get(1, "type");
    sd_bus_message_read(type.get(), "v", "s", &text);
    EXPECT_STREQ(text, "standard");
    const BusMessage visible = get(1, "visible");
    sd_bus_message_read(visible.get(), "v", "b", &truth);
    EXPECT_EQ(truth, 1);
    EXPECT_FALSE(get(1, "icon-name"));
    EXPECT_FALSE(get(99, "label"));
}

TEST_F(DbusMenuTest, GroupOfPropertiesHasTheWantedOnesOfTheKnownEntries)
{
    startWithMenuOn("waybar");
    const BusMessage reply = askMenu("GetGroupProperties",
        [](sd_bus_message* call) { sd_bus_message_append(call, "aias", 2, 4, 99, 1, "label"); });
    int entry = 0;
    const char* name = "";
    const char* text = "";
    sd_bus_message_enter_container(reply.get(), 'a', "(ia{sv})");
    EXPECT_GT(sd_bus_message_read(reply.get(), "(ia{sv})", &entry, 1, &name, "s", &text), 0);
    EXPECT_STREQ(name, "label");
    EXPECT_EQ(entry, 4);
    EXPECT_STREQ(text, "Settings\u2026");
    EXPECT_GT(sd_bus_message_at_end(reply.get(), 0), 0);
}

TEST_F(DbusMenuTest, ReadingsAreFreshOnceTheHostHasAsked)
{
    const std::string& name = startWithMenuOn("waybar");
    static_cast<void>(panel->layout(name));
    watts = 99;
    EXPECT_TRUE(panel->aboutToShow(name));
    EXPECT_EQ(panel->layout(name).lines.front().label, "Mac using: 99 W");
    EXPECT_THAT(panel->heard(), ElementsAre(Heard{name, "ItemsPropertiesUpdated"}));
}

TEST_F(DbusMenuTest, OpeningWithoutNewsSaysSo)
{
    menu.setTitle(load, "Mac using: 12 W");
    const std::string& name = startWithMenuOn("waybar");
    static_cast<void>(panel->layout(name));
    EXPECT_FALSE(panel->aboutToShow(name));
    EXPECT_THAT(panel->heard(), IsEmpty());
}

TEST_F(DbusMenuTest, SubmenusThatDoNotExistAreNotAnOpening)
{
    const std::string& name = startWithMenuOn("waybar");
    EXPECT_FALSE(panel->aboutToShow(name, 4));
    EXPECT_EQ(openings, 0);
}

TEST_F(DbusMenuTest, OpeningIsAnnouncedOnceHoweverOftenTheHostTells)
{
    const std::string& name = startWithMenuOn("waybar");
    panel->aboutToShow(name);
    panel->menuEvent(name, 0, "opened");
    EXPECT_EQ(openings, 1);
    panel->menuEvent(name, 0, "closed");
    panel->menuEvent(name, 0, "closed");
    EXPECT_EQ(closings, 1);
}

TEST_F(DbusMenuTest, GroupedQuestionCountsLikeASingleOne)
{
    const std::string& name = startWithMenuOn("waybar");
    static_cast<void>(panel->layout(name));
    const BusMessage reply = askMenu(
        "AboutToShowGroup", [](sd_bus_message* call) { sd_bus_message_append(call, "ai", 2, 0, 99); });
    int changed = -1;
    int unknown = -1;
    sd_bus_message_read(reply.get(), "aiai", 1, &changed, 1, &unknown);
    EXPECT_EQ(changed, 0);
    EXPECT_EQ(unknown, 99);
    EXPECT_EQ(openings, 1);
}

TEST_F(DbusMenuTest, ChangesOfAnOpenMenuAreToldTogether)
{
    const std::string& name = startWithMenuOn("waybar");
    panel->aboutToShow(name);
    static_cast<void>(panel->layout(name));
    static_cast<void>(panel->heard());
    menu.setTitle(load, "Mac using: 1 W");
    menu.setTitle(charger, "Charger: 5 W");
    menu.setVisible(charger, false);
    EXPECT_THAT(panel->heard(), ElementsAre(Heard{name, "ItemsPropertiesUpdated"}));
    const test::MenuLayout layout = panel->layout(name);
    EXPECT_EQ(layout.lines[1].label, "Charger: 5 W");
    EXPECT_FALSE(layout.lines[1].visible);
}

TEST_F(DbusMenuTest, AddedEntryIsANewLayout)
{
    const std::string& name = startWithMenuOn("waybar");
    const std::uint32_t revision = panel->layout(name).revision;
    menu.add({.title = "Quit Amperly", .shortcut = 'q', .activate = {}});
    panel->aboutToShow(name);
    EXPECT_THAT(panel->heard(), ElementsAre(Heard{name, "LayoutUpdated"}));
    const test::MenuLayout layout = panel->layout(name);
    EXPECT_GT(layout.revision, revision);
    EXPECT_THAT(layout.lines.back().shortcut, ElementsAre("Control", "q"));
}

TEST_F(DbusMenuTest, ClickedEntryActsAndClosesTheMenu)
{
    const std::string& name = startWithMenuOn("waybar");
    panel->aboutToShow(name);
    panel->menuEvent(name, identifier(settings), "clicked");
    EXPECT_TRUE(runUntil([&] { return settingsOpened == 1; }));
    EXPECT_EQ(closings, 1);
}

TEST_F(DbusMenuTest, ClickedLineThatOnlySaysSomethingDoesNothing)
{
    const std::string& name = startWithMenuOn("waybar");
    panel->menuEvent(name, identifier(load), "clicked");
    panel->menuEvent(name, identifier(settings), "hovered");
    static_cast<void>(panel->layout(name));
    EXPECT_EQ(settingsOpened, 0);
}

TEST_F(DbusMenuTest, GroupedEventsAllCountAndUnknownOnesComeBack)
{
    startWithMenuOn("waybar");
    const BusMessage reply = askMenu("EventGroup", [this](sd_bus_message* call) {
        sd_bus_message_append(call, "a(isvu)", 2, identifier(settings), "clicked", "s", "", std::uint32_t{0},
            99, "clicked", "s", "", std::uint32_t{0});
    });
    int unknown = 0;
    sd_bus_message_read(reply.get(), "ai", 1, &unknown);
    EXPECT_EQ(unknown, 99);
    EXPECT_TRUE(runUntil([&] { return settingsOpened == 1; }));
}

TEST_F(DbusMenuTest, EventOfAnUnknownEntryIsAnError)
{
    startWithMenuOn("waybar");
    EXPECT_FALSE(askMenu("Event", [](sd_bus_message* call) {
        sd_bus_message_append(call, "isvu", 99, "clicked", "s", "", std::uint32_t{0});
    }));
}

TEST_F(DbusMenuTest, PanelThatEndsWithItsMenuOpenClosesIt)
{
    const std::string& name = startWithMenuOn("waybar");
    panel->aboutToShow(name);
    panel.reset();
    EXPECT_TRUE(runUntil([&] { return closings == 1; }));
}

TEST_F(DbusMenuTest, TilesShareOneMenuAndItsOpenings)
{
    picture = test::FakePicture({"1", "22"});
    panel.emplace(daemon.address());
    startUnder("kded5");
    item->setMenu(menu);
    ASSERT_TRUE(panel->sees(2));
    panel->aboutToShow(panel->items()[0]);
    panel->menuEvent(panel->items()[1], 0, "opened");
    EXPECT_EQ(openings, 1);
    panel->menuEvent(panel->items()[1], identifier(settings), "clicked");
    EXPECT_TRUE(runUntil([&] { return settingsOpened == 1; }));
}

TEST_F(DbusMenuTest, ChangesAreToldToTheTileWhoseMenuIsOpen)
{
    picture = test::FakePicture({"1", "22"});
    panel.emplace(daemon.address());
    startUnder("kded5");
    item->setMenu(menu);
    ASSERT_TRUE(panel->sees(2));
    for (const std::string& tile : panel->items())
        static_cast<void>(panel->layout(tile));
    panel->aboutToShow(panel->items()[1]);
    EXPECT_THAT(panel->heard(), ElementsAre(Heard{panel->items()[1], "ItemsPropertiesUpdated"}));
    EXPECT_TRUE(panel->aboutToShow(panel->items()[0])); // which then has all of it to tell
    EXPECT_THAT(panel->heard(), ElementsAre(Heard{panel->items()[0], "ItemsPropertiesUpdated"}));
}

TEST_F(DbusMenuTest, ReadingThatGoesWhileItsTilesMenuOpensLeavesTheOthers)
{
    picture = test::FakePicture({"1", "22"});
    panel.emplace(daemon.address());
    startUnder("kded5");
    item->setMenu(menu);
    ASSERT_TRUE(panel->sees(2));
    menu.willOpen = [this] { show({"1"}); };
    panel->aboutToShow(panel->items()[1]);
    EXPECT_TRUE(runUntil([&] { return !panel->isThere(panel->items()[1]); }));
    EXPECT_EQ(panel->layout(panel->items()[0]).lines.size(), 4U);
}

TEST_F(DbusMenuTest, GnomeFindsThePanelInTheMenu)
{
    const std::string& name = startWithMenuOn("gnome-shell");
    const std::vector<MenuLine> lines = panel->layout(name).lines;
    ASSERT_EQ(lines.size(), 6U);
    EXPECT_EQ(lines[0].label, "Open Amperly");
    EXPECT_EQ(lines[1].type, "separator");
    EXPECT_EQ(lines[2].identifier, 1);
    panel->menuEvent(name, lines[0].identifier, "clicked");
    ASSERT_TRUE(runUntil([&] { return clicks.size() == 1; }));
    EXPECT_EQ(clicks[0].button, ClickButton::Left);
}

TEST_F(DbusMenuTest, MenuThatIsSetLaterReplacesTheItem)
{
    startOn("waybar");
    static_cast<void>(onlyItem());
    item->setMenu(menu);
    ASSERT_TRUE(panel->sees(2));
    EXPECT_EQ(panel->layout(panel->items()[1]).lines.size(), 4U);
    EXPECT_FALSE(panel->isThere(panel->items()[0]));
}

} // namespace
} // namespace amperly
