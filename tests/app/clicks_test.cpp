#include "render/look/quiet_button.h"
#include "tests/app/application_test.h"
#include "tests/app/store_without_defaults.h"

#include <QAbstractButton>
#include <QWidget>

namespace amperly {
namespace {

class ClicksTest : public ApplicationTest { };

TEST_F(ClicksTest, ALeftClickOpensThePanelWithAFreshReading)
{
    launchWith({.systemLoad = 7.25, .battery = -7.25});
    platform.statusItem.click(ClickButton::Left, ScreenPoint{700, 24});
    EXPECT_TRUE(platform.popover.isShown());
    EXPECT_EQ(platform.popover.anchor(), (ScreenPoint{700, 24}));
    EXPECT_EQ(readings.readings(), 2);
    EXPECT_FALSE(platform.statusItem.isMenuOpen());
}

TEST_F(ClicksTest, ALeftClickWhileThePanelIsOpenOnlyClosesIt)
{
    launch();
    click(ClickButton::Left);
    const int readingsBefore = readings.readings();
    click(ClickButton::Left);
    EXPECT_FALSE(platform.popover.isShown());
    EXPECT_EQ(readings.readings(), readingsBefore);
    EXPECT_FALSE(platform.statusItem.isMenuOpen());
}

TEST_F(ClicksTest, ThePanelOpensInAnApplicationThatHasTheUsersAttention)
{
    launch();
    EXPECT_EQ(platform.desktop.activations(), 0);
    click(ClickButton::Left);
    EXPECT_EQ(platform.desktop.activations(), 1);
    click(ClickButton::Left); // closes
    EXPECT_EQ(platform.desktop.activations(), 1);
}

TEST_F(ClicksTest, AClickThatIsTheRestOfWhatClosedThePanelDoesNothingElse)
{
    launch();
    platform.advance(1.5);
    const RepeatingTimer* const timer = app->timer();
    const int startedTimers = platform.timers.startedTimers();
    platform.popover.setTakesClicks(false);
    click(ClickButton::Left);
    EXPECT_FALSE(platform.popover.isShown());
    EXPECT_EQ(platform.popover.showings(), 0);
    EXPECT_EQ(platform.desktop.activations(), 0);
    EXPECT_EQ(readings.readings(), 1);
    EXPECT_EQ(app->timer(), timer);
    EXPECT_EQ(platform.timers.startedTimers(), startedTimers);
    platform.advance(0.6); // the tick comes when it would have come
    EXPECT_EQ(readings.readings(), 2);

    platform.popover.setTakesClicks(true);
    click(ClickButton::Left);
    EXPECT_TRUE(platform.popover.isShown());
}

TEST_F(ClicksTest, ARightClickOpensTheMenuWhateverAClickShows)
{
    preferences.set(Pref::clickShows, std::string("panel"));
    launch();
    click(ClickButton::Right);
    EXPECT_TRUE(platform.statusItem.isMenuOpen());
    EXPECT_FALSE(platform.popover.isShown());
}

TEST_F(ClicksTest, ARightClickWhileThePanelIsOpenClosesItAndOpensTheMenu)
{
    launch();
    click(ClickButton::Left);
    click(ClickButton::Right);
    EXPECT_FALSE(platform.popover.isShown());
    EXPECT_TRUE(platform.statusItem.isMenuOpen());
}

TEST_F(ClicksTest, AMenuThatTheDesktopOpensClosesThePanel)
{
    launch();
    click(ClickButton::Left);
    platform.statusItem.openMenu(std::nullopt);
    EXPECT_FALSE(platform.popover.isShown());
}

TEST_F(ClicksTest, AClickShowsTheMenuOnlyForExactlyThatWord)
{
    launch();
    preferences.set(Pref::clickShows, std::string("menu"));
    click(ClickButton::Left);
    EXPECT_TRUE(platform.statusItem.isMenuOpen());
    platform.statusItem.closeMenu();

    for (const char* other : {"Menu", "MENU", "menu ", "", "popover"}) {
        preferences.set(Pref::clickShows, std::string(other));
        click(ClickButton::Left);
        EXPECT_TRUE(platform.popover.isShown()) << '"' << other << '"';
        platform.popover.dismiss();
    }
}

TEST_F(ClicksTest, AClickWhosePreferenceIsNowhereToBeFoundOpensThePanel)
{
    StoreWithoutDefaults nothing;
    SimulatedPlatform desktop(nothing);
    app = std::make_unique<AppDelegate>(desktop.platform());
    app->applicationDidFinishLaunching();
    desktop.statusItem.click(ClickButton::Left);
    EXPECT_TRUE(desktop.popover.isShown());
    EXPECT_FALSE(desktop.statusItem.isMenuOpen());
    app.reset();
}

TEST_F(ClicksTest, ThePanelsSettingsButtonClosesItAndShowsTheSettings)
{
    launchWith({.systemLoad = 7.25, .battery = -7.25});
    click(ClickButton::Left);
    platform.popover.content()->findChild<QAbstractButton*>()->click(); // the first of its footer
    EXPECT_FALSE(platform.popover.isShown());
    ASSERT_NE(app->settingsWindow(), nullptr);
    EXPECT_TRUE(app->settingsWindow()->isVisible());
}

} // namespace
} // namespace amperly
