// The status item, the login item, the desktop and the font that a test looks at.

#include "platform/simulated/desktop/fake_login_item.h"
#include "platform/simulated/desktop/fixed_ui_font.h"
#include "platform/simulated/desktop/recording_desktop.h"
#include "platform/simulated/desktop/recording_status_item.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace amperly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// One reading as a solid block of ink.
class BlockPicture : public StatusPicture {
public:
    explicit BlockPicture(std::string text, double widthPoints = 10.2)
        : m_text(std::move(text)), m_widthPoints(widthPoints)
    {
    }
    std::uint64_t key() const override { return std::hash<std::string>()(m_text); }
    double widthPoints() const override { return m_widthPoints; }
    double heightPoints() const override { return 4.0; }
    void draw(CoverageMask& mask, double) const override
    {
        std::fill(mask.coverage.begin(), mask.coverage.end(), std::uint8_t{255});
    }
    int readingCount() const override { return 1; }
    std::string_view readingText(int) const override { return m_text; }
    void drawTile(CoverageMask&, int, int) const override { }
    void drawGlyph(CoverageMask&, int) const override { }

private:
    std::string m_text;
    double m_widthPoints;
};

class RecordingStatusItemTest : public testing::Test {
protected:
    RecordingStatusItemTest()
    {
        item.setMenu(menu);
        menu.willOpen = [this] { events.emplace_back("opens"); };
        menu.didClose = [this] { events.emplace_back("closed"); };
        add("12 W", {});
        MenuEntry separator;
        separator.separator = true;
        menu.add(separator);
        settings = add("Settings…", [this] { events.emplace_back("settings"); });
    }

    int add(std::string title, std::function<void()> activate)
    {
        MenuEntry entry;
        entry.title = std::move(title);
        entry.activate = std::move(activate);
        return menu.add(entry);
    }

    Menu menu;
    int settings = 0;
    std::vector<std::string> events;
    RecordingStatusItem item;
};

TEST_F(RecordingStatusItemTest, NothingIsShownAtFirst)
{
    EXPECT_FALSE(item.shown());
    EXPECT_EQ(item.showings(), 0);
}

TEST_F(RecordingStatusItemTest, WhatIsShownOutlivesThePicture)
{
    item.setScale(2.0);
    item.show(BlockPicture("12 W"), "Load 12 W", "Amperly: 12 W");
    ASSERT_TRUE(item.shown());
    EXPECT_THAT(item.shown()->readingTexts, ElementsAre("12 W"));
    EXPECT_EQ(item.shown()->toolTip, "Load 12 W");
    EXPECT_EQ(item.shown()->spokenLabel, "Amperly: 12 W");
    EXPECT_EQ(item.shown()->mask.width, 21) << "rounded up";
    EXPECT_EQ(item.shown()->mask.height, 8);
    EXPECT_EQ(item.shown()->mask.at(20, 7), 255);
}

TEST_F(RecordingStatusItemTest, OnlyShowingsOfSomethingElseAreChanges)
{
    item.show(BlockPicture("12 W"), std::nullopt, "a");
    item.show(BlockPicture("12 W"), std::nullopt, "a");
    EXPECT_EQ(item.changes(), 1);
    item.show(BlockPicture("12 W"), "", "a");
    item.show(BlockPicture("12 W"), "", "b");
    item.show(BlockPicture("12 W", 11.0), "", "b");
    EXPECT_EQ(item.changes(), 4);
    EXPECT_EQ(item.showings(), 5);
}

TEST_F(RecordingStatusItemTest, AKeyThatStandsForTwoPicturesIsAContradiction)
{
    item.show(BlockPicture("12 W", 10.0), std::nullopt, "a");
    item.show(BlockPicture("12 W", 10.0), std::nullopt, "b");
    item.show(BlockPicture("13 W", 11.0), std::nullopt, "b");
    item.setScale(2.0);
    item.show(BlockPicture("13 W", 11.0), std::nullopt, "b");
    EXPECT_EQ(item.contradictions(), 0);
    item.show(BlockPicture("13 W", 10.0), std::nullopt, "b");
    EXPECT_EQ(item.contradictions(), 1);
}

TEST_F(RecordingStatusItemTest, AnotherPanelAsksForThePicture)
{
    item.wantPicture();
    item.onPictureWanted([this] { events.emplace_back("wanted"); });
    item.wantPicture();
    EXPECT_THAT(events, ElementsAre("wanted"));
}

TEST_F(RecordingStatusItemTest, ClicksAreHandedOnWithTheirAnchor)
{
    std::vector<StatusClick> clicks;
    item.click(ClickButton::Left);
    item.onClick([&](const StatusClick& click) { clicks.push_back(click); });
    item.click(ClickButton::Right, ScreenPoint{3, 4});
    ASSERT_EQ(clicks.size(), 1u);
    EXPECT_EQ(clicks[0].button, ClickButton::Right);
    EXPECT_EQ(clicks[0].anchor, (ScreenPoint{3, 4}));
}

TEST_F(RecordingStatusItemTest, TheMenuIsToldOfItsOpeningAndClosing)
{
    item.openMenu(ScreenPoint{1, 2});
    item.openMenu(std::nullopt);
    EXPECT_TRUE(item.isMenuOpen());
    EXPECT_EQ(item.menuAnchor(), (ScreenPoint{1, 2}));
    item.closeMenu();
    item.closeMenu();
    EXPECT_THAT(events, ElementsAre("opens", "closed"));
    EXPECT_EQ(item.menuOpenings(), 1);
}

TEST_F(RecordingStatusItemTest, AChosenEntryActsAfterTheMenuHasClosed)
{
    item.openMenu(std::nullopt);
    EXPECT_TRUE(item.choose("Settings…"));
    EXPECT_THAT(events, ElementsAre("opens", "closed", "settings"));
    EXPECT_FALSE(item.isMenuOpen());
}

TEST_F(RecordingStatusItemTest, WhatTheUserCouldNotChooseIsNotChosen)
{
    EXPECT_FALSE(item.choose("Settings…")) << "closed";
    item.openMenu(std::nullopt);
    EXPECT_FALSE(item.choose("12 W")) << "without an action";
    EXPECT_FALSE(item.choose("")) << "a separator";
    EXPECT_FALSE(item.choose("Quit")) << "not there";
    menu.setVisible(settings, false);
    EXPECT_FALSE(item.choose("Settings…")) << "hidden";
    EXPECT_THAT(events, ElementsAre("opens"));
}

TEST_F(RecordingStatusItemTest, TitlesAreReadAsTheUserSeesThem)
{
    EXPECT_THAT(item.visibleTitles(), ElementsAre("12 W", "", "Settings…"));
    menu.setTitle(0, "13 W");
    menu.setVisible(settings, false);
    EXPECT_THAT(item.visibleTitles(), ElementsAre("13 W", ""));
}

TEST(FakeLoginItemTest, RegistersAndUnregisters)
{
    FakeLoginItem item;
    EXPECT_EQ(item.status(), LoginItemStatus::NotRegistered);
    EXPECT_EQ(item.registerItem(), std::nullopt);
    EXPECT_EQ(item.status(), LoginItemStatus::Enabled);
    EXPECT_EQ(item.unregisterItem(), std::nullopt);
    EXPECT_EQ(item.status(), LoginItemStatus::NotRegistered);
    EXPECT_EQ(item.registrations(), 1);
    EXPECT_EQ(item.unregistrations(), 1);
}

TEST(FakeLoginItemTest, FailsOnRequestAndLeavesTheStatusAlone)
{
    FakeLoginItem item;
    item.failWith("The disk is full");
    EXPECT_EQ(item.registerItem(), "The disk is full");
    EXPECT_EQ(item.status(), LoginItemStatus::NotRegistered);
    item.failWith(std::nullopt);
    EXPECT_EQ(item.registerItem(), std::nullopt);
    item.failWith("No");
    EXPECT_EQ(item.unregisterItem(), "No");
    EXPECT_EQ(item.status(), LoginItemStatus::Enabled);
    EXPECT_EQ(item.registrations(), 2);
}

TEST(FakeLoginItemTest, ApprovalIsTheUsers)
{
    FakeLoginItem item;
    item.requireApproval();
    EXPECT_EQ(item.registerItem(), std::nullopt);
    EXPECT_EQ(item.status(), LoginItemStatus::RequiresApproval);
    item.openSystemSettings();
    item.setStatus(LoginItemStatus::Enabled);
    EXPECT_EQ(item.status(), LoginItemStatus::Enabled);
    EXPECT_EQ(item.settingsOpenings(), 1);
}

TEST(RecordingDesktopTest, KeepsAccountOfWhatItIsAskedFor)
{
    RecordingDesktop desktop;
    EXPECT_THAT(desktop.openedAddresses(), IsEmpty());
    desktop.openAddress("https://example.org/a");
    desktop.log("one line");
    desktop.activate();
    EXPECT_FALSE(desktop.quitRequested());
    desktop.quit();
    EXPECT_THAT(desktop.openedAddresses(), ElementsAre("https://example.org/a"));
    EXPECT_THAT(desktop.logLines(), ElementsAre("one line"));
    EXPECT_EQ(desktop.activations(), 1);
    EXPECT_TRUE(desktop.quitRequested());
}

TEST(RecordingDesktopTest, TheUserStartsTheProgramAgain)
{
    RecordingDesktop desktop;
    int reopenings = 0;
    desktop.reopen();
    desktop.onReopen([&] { ++reopenings; });
    desktop.reopen();
    EXPECT_EQ(reopenings, 1);
}

TEST(RecordingDesktopTest, IsWhatItIsSetToBe)
{
    RecordingDesktop desktop;
    EXPECT_FALSE(desktop.isInstalled());
    desktop.setInstalled(true);
    desktop.setShortVersion("1.2");
    desktop.setVisibleScreenHeight(std::nullopt);
    EXPECT_TRUE(desktop.isInstalled());
    EXPECT_EQ(desktop.shortVersion(), "1.2");
    EXPECT_EQ(desktop.visibleScreenHeight(), std::nullopt);
}

TEST(FixedUiFontTest, GivesTheFaceOfTheWeightWhateverIsToBeWritten)
{
    const FixedUiFont font({.path = "regular.ttf"}, {.path = "family.ttc", .faceIndex = 3});
    EXPECT_EQ(font.face(FontWeight::Regular, U"0123"), (FontFace{"regular.ttf", 0}));
    EXPECT_EQ(font.face(FontWeight::Medium, U"日本"), (FontFace{"family.ttc", 3}));
    EXPECT_EQ(FixedUiFont().face(FontWeight::Regular, U"0"), std::nullopt);
}

} // namespace
} // namespace amperly
