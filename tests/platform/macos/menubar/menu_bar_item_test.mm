#include "platform/macos/menubar/menu_bar_item.h"

#include "tests/platform/macos/fakes/fake_desktop_test.h"
#include "tests/platform/macos/menubar/test_picture.h"

namespace amperly {
namespace {

class MenuBarItemTest : public FakeDesktopTest {
protected:
    MenuBarItemTest() { make(); }

    void make()
    {
        item.reset();
        item.emplace();
        item->onClick([this](const StatusClick& click) {
            clicks.push_back(click.button);
            anchored = anchored || click.anchor.has_value();
        });
        item->setMenu(menu);
    }

    void TearDown() override
    {
        item.reset();
        FakeDesktopTest::TearDown();
    }

    Menu menu;
    std::optional<MenuBarItem> item;
    std::vector<ClickButton> clicks;
    bool anchored = false;
};

TEST_F(MenuBarItemTest, TheItemIsAnImageAndNothingElse)
{
    EXPECT_EQ(stage.item.count, 1);
    EXPECT_EQ(stage.item.title, "");
    EXPECT_TRUE(stage.item.onlyImage);
}

TEST_F(MenuBarItemTest, TheSystemKnowsWhichItemItIs)
{
    EXPECT_EQ(stage.item.autosaveName, "Amperly");
}

TEST_F(MenuBarItemTest, PictureToolTipAndLabelAreShown)
{
    item->show(TestPicture(40.0), "Mac using 12.3 W", "Amperly: 12.3 watts");
    EXPECT_EQ(stage.item.width, 40.0);
    EXPECT_EQ(stage.item.height, 22.0);
    EXPECT_EQ(stage.item.toolTip, "Mac using 12.3 W");
    EXPECT_EQ(stage.item.spokenLabel, "Amperly: 12.3 watts");
}

TEST_F(MenuBarItemTest, AToolTipThatEndsIsTakenAway)
{
    item->show(TestPicture(), "Mac using 12.3 W", "");
    item->show(TestPicture(), std::nullopt, "");
    EXPECT_EQ(stage.item.toolTip, std::nullopt);
}

TEST_F(MenuBarItemTest, ShowingWhatIsShownDrawsNothing)
{
    item->show(TestPicture(30.0, 7), "Mac using 12.3 W", "");
    item->show(TestPicture(30.0, 7), "Mac using 12.4 W", "");
    EXPECT_EQ(stage.item.images, 1);
    EXPECT_EQ(stage.item.toolTip, "Mac using 12.4 W");
    item->show(TestPicture(30.0, 8), "Mac using 12.4 W", "");
    EXPECT_EQ(stage.item.images, 2);
}

TEST_F(MenuBarItemTest, WithoutAButtonNothingIsShownAndNothingBreaks)
{
    item.reset();
    stage.system.givesButton = false;
    make();
    item->show(TestPicture(), "Mac using 12.3 W", "");
    item->openMenu(std::nullopt);
    EXPECT_EQ(stage.item.images, 0);
    EXPECT_FALSE(stage.item.hasMenu);
}

TEST_F(MenuBarItemTest, BothMouseButtonsClickWhenTheyComeUp)
{
    fake_mac::click(fake_mac::kLeft);
    fake_mac::click(fake_mac::kRight);
    EXPECT_THAT(clicks, testing::ElementsAre(ClickButton::Left, ClickButton::Right));
    EXPECT_FALSE(anchored);
}

TEST_F(MenuBarItemTest, AnAssistiveTechnologyClicksOnTheLeft)
{
    fake_mac::pressByAccessibility();
    EXPECT_THAT(clicks, testing::ElementsAre(ClickButton::Left));
}

TEST_F(MenuBarItemTest, AnAssistiveTechnologyClicksOnTheLeftAlsoAfterTheRightButton)
{
    fake_mac::click(fake_mac::kRight);
    fake_mac::pressByAccessibility();
    EXPECT_THAT(clicks, testing::ElementsAre(ClickButton::Right, ClickButton::Left));
}

TEST_F(MenuBarItemTest, TheMenuIsAttachedForOneOpeningOnly)
{
    item->onClick([this](const StatusClick&) { item->openMenu(std::nullopt); });
    fake_mac::click(fake_mac::kRight, [this] {
        EXPECT_TRUE(stage.item.hasMenu);
        return std::nullopt;
    });
    EXPECT_FALSE(stage.item.hasMenu);
    EXPECT_EQ(stage.menuOpenings, 1);
    fake_mac::click(fake_mac::kRight);
    EXPECT_EQ(stage.menuOpenings, 2);
}

TEST_F(MenuBarItemTest, AfterTheMenuClicksArriveAgain)
{
    item->openMenu(std::nullopt);
    fake_mac::click(fake_mac::kLeft);
    EXPECT_THAT(clicks, testing::ElementsAre(ClickButton::Left));
}

TEST_F(MenuBarItemTest, AMenuThatDoesNotWaitStaysAttachedUntilItCloses)
{
    stage.system.menuWaits = false;
    item->openMenu(std::nullopt);
    EXPECT_TRUE(stage.item.hasMenu);
    fake_mac::closeMenu();
    EXPECT_FALSE(stage.item.hasMenu);
}

TEST_F(MenuBarItemTest, TheMenuIsDetachedBeforeWhatWasChosenIsDone)
{
    bool attached = true;
    Menu choices;
    MenuEntry entry;
    entry.title = "Settings…";
    entry.activate = [&] { attached = stage.item.hasMenu; };
    choices.add(entry);
    item->setMenu(choices);
    item->onClick([this](const StatusClick&) { item->openMenu(std::nullopt); });
    fake_mac::click(fake_mac::kRight, [] { return 0; });
    EXPECT_FALSE(attached);
    item.reset(); // before the menu
}

TEST_F(MenuBarItemTest, TheItemGoesWithItsObject)
{
    item.reset();
    EXPECT_EQ(stage.item.count, 0);
}

TEST_F(MenuBarItemTest, ThePlaceThatTheUserGaveItStays)
{
    fake_mac::writeFromElsewhere("NSStatusItem Preferred Position Amperly", 312.0);
    item.reset();
    EXPECT_EQ(fake_mac::storedValue("NSStatusItem Preferred Position Amperly"), fake_mac::Stored(312.0));
}

TEST_F(MenuBarItemTest, APlaceThatNobodyGaveItIsNotMadeUp)
{
    item.reset();
    EXPECT_EQ(fake_mac::storedValue("NSStatusItem Preferred Position Amperly"), fake_mac::Stored());
}

} // namespace
} // namespace amperly
