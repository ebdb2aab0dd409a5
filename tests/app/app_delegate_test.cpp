#include "tests/app/application_test.h"

#include "app/settings_window.h"

#include <QPointer>
#include <QWidget>

namespace amperly {
namespace {

using testing::ElementsAre;

const PowerSample kCharging{.systemLoad = 14.2,
    .adapterIn = 30.1,
    .battery = 15.9,
    .adapterRating = 140,
    .batteryPercent = 64,
    .externalConnected = true};
const PowerSample kOnBattery{.systemLoad = 7.25, .battery = -7.25, .batteryPercent = 55};

class AppDelegateTest : public ApplicationTest { };

// Start-up

TEST_F(AppDelegateTest, DefaultsAreRegisteredBeforeAnythingReadsThem)
{
    launch();
    EXPECT_EQ(preferences.real(Pref::interval), 2.0);
    EXPECT_EQ(app->timer()->intervalSeconds(), 2.0);
}

TEST_F(AppDelegateTest, AnInstalledProgramRegistersItselfForLoginOnce)
{
    platform.desktop.setInstalled(true);
    launch();
    EXPECT_EQ(platform.loginItem.registrations(), 1);
    EXPECT_EQ(platform.loginItem.unaskedRegistrations(), 1) << "what the user decided before stays";
    EXPECT_TRUE(preferences.boolean(Pref::loginItemConfigured));
    launch();
    EXPECT_EQ(platform.loginItem.registrations(), 1);
}

TEST_F(AppDelegateTest, AProgramThatIsNotInstalledNeverRegistersItself)
{
    launch();
    EXPECT_EQ(platform.loginItem.registrations(), 0);
    EXPECT_FALSE(preferences.boolean(Pref::loginItemConfigured));
}

TEST_F(AppDelegateTest, AFailedRegistrationIsOneLineInTheLogAndTriedAgainAtTheNextLaunch)
{
    platform.desktop.setInstalled(true);
    platform.loginItem.failWith("Permission denied");
    launch();
    EXPECT_THAT(platform.desktop.logLines(),
        ElementsAre("Amperly: couldn't enable launch at login: Permission denied"));
    EXPECT_FALSE(preferences.boolean(Pref::loginItemConfigured));
    launch();
    EXPECT_EQ(platform.loginItem.registrations(), 2);
}

// Status item

TEST_F(AppDelegateTest, TooltipAndSpokenLabelTellTheReading)
{
    launchWith(kCharging);
    EXPECT_EQ(platform.statusItem.shown()->toolTip, "Mac using 14.2 W");
    EXPECT_EQ(platform.statusItem.shown()->spokenLabel,
        "Mac using 14.2 W, charger supplying 30.1 W, Battery charging: 15.9 W (64%)");
}

TEST_F(AppDelegateTest, WithoutAReadingThereIsNoTooltipAndTheLabelSaysSo)
{
    readings.give(std::nullopt);
    launch();
    EXPECT_EQ(platform.statusItem.shown()->toolTip, std::nullopt);
    EXPECT_EQ(platform.statusItem.shown()->spokenLabel, "Amperly: no power data");
    EXPECT_THAT(platform.statusItem.shown()->readingTexts, ElementsAre("–"));
}

TEST_F(AppDelegateTest, AnUnknownLoadIsSaidAsADash)
{
    launchWith({.battery = 15.9,
        .batteryPercent = 64,
        .externalConnected = true,
        .systemLoadKnown = false,
        .adapterInKnown = false});
    EXPECT_EQ(platform.statusItem.shown()->toolTip, "Mac using –");
    EXPECT_EQ(platform.statusItem.shown()->spokenLabel,
        "Mac using –, charger supplying –, Battery charging: 15.9 W (64%)");
}

TEST_F(AppDelegateTest, ThePercentageIsFollowedEvenWhileTheWattsStay)
{
    launchWith(kOnBattery);
    PowerSample later = kOnBattery;
    later.batteryPercent = 54;
    tickWith(later);
    EXPECT_THAT(platform.statusItem.shown()->spokenLabel, testing::HasSubstr("(54%)"));
}

TEST_F(AppDelegateTest, AReadingThatIsTheSameToTheLastBitIsNotDrawnAgain)
{
    launchWith(kOnBattery);
    tickWith(kOnBattery);
    EXPECT_EQ(platform.statusItem.showings(), 1);
    tickWith(kCharging);
    EXPECT_EQ(platform.statusItem.showings(), 2);
}

// Menu

TEST_F(AppDelegateTest, TheMenuListsFourReadingsAndThreeCommands)
{
    launchWith(kCharging);
    click(ClickButton::Right);
    EXPECT_THAT(menuTitles(),
        ElementsAre("Mac using: 14.2 W", "From charger: 30.1 W", "Battery charging: 15.9 W (64%)",
            "Charger: 140 W", "", "Settings…", "Buy Me a Coffee ☕", "Quit Amperly"));
    for (int reading = 0; reading < 4; ++reading)
        EXPECT_FALSE(app->menu().entries()[static_cast<std::size_t>(reading)].enabled);
    EXPECT_EQ(app->menu().entries()[5].shortcut, ',');
    EXPECT_EQ(app->menu().entries()[6].shortcut, 0);
    EXPECT_EQ(app->menu().entries()[7].shortcut, 'q');
}

TEST_F(AppDelegateTest, OnBatteryTheMenuSaysSoAndHidesTheChargersRating)
{
    launchWith(kOnBattery);
    click(ClickButton::Right);
    EXPECT_THAT(menuTitles(),
        ElementsAre("Mac using: 7.2 W", "On battery", "Battery draining: 7.2 W (55%)", "", "Settings…",
            "Buy Me a Coffee ☕", "Quit Amperly"));
}

TEST_F(AppDelegateTest, WithoutAReadingTheMenuSaysSoInOneLine)
{
    readings.give(std::nullopt);
    launch();
    click(ClickButton::Right);
    EXPECT_THAT(menuTitles(),
        ElementsAre("No power data available", "", "Settings…", "Buy Me a Coffee ☕", "Quit Amperly"));
}

TEST_F(AppDelegateTest, UnknownFiguresAreDashesInTheMenu)
{
    launchWith({.batteryPercent = 80,
        .externalConnected = true,
        .systemLoadKnown = false,
        .adapterInKnown = false,
        .batteryKnown = false});
    click(ClickButton::Right);
    EXPECT_THAT(menuTitles(),
        ElementsAre("Mac using: –", "From charger: –", "Battery: – (80%)", "", "Settings…",
            "Buy Me a Coffee ☕", "Quit Amperly"));
}

TEST_F(AppDelegateTest, WhereNobodyKnowsOfAChargerTheMenuClaimsNone)
{
    constexpr PowerSample kNobodyKnows{.batteryPercent = 80,
        .systemLoadKnown = false,
        .adapterInKnown = false,
        .batteryKnown = false,
        .externalKnown = false};
    launchWith(kNobodyKnows);
    click(ClickButton::Right);
    EXPECT_THAT(menuTitles(),
        ElementsAre("Mac using: –", "From charger: –", "Battery: – (80%)", "", "Settings…",
            "Buy Me a Coffee ☕", "Quit Amperly"));
    EXPECT_EQ(platform.statusItem.shown()->spokenLabel, "Mac using –, Battery: – (80%)");

    PowerSample unplugged = kNobodyKnows;
    unplugged.externalKnown = true;
    tickWith(unplugged);
    EXPECT_EQ(menuTitles()[1], "On battery");
    EXPECT_EQ(platform.statusItem.shown()->spokenLabel, "Mac using –, Battery draining: – (80%)");
}

TEST_F(AppDelegateTest, TheOpenMenuFollowsEveryTick)
{
    preferences.set(Pref::smoothing, false);
    launchWith(kOnBattery);
    click(ClickButton::Right);
    tickWith(kCharging);
    EXPECT_THAT(menuTitles()[1], "From charger: 30.1 W");
    EXPECT_EQ(menuTitles().size(), 8U);
}

TEST_F(AppDelegateTest, TheClosedMenusFiguresAreLeftAlone)
{
    launchWith(kOnBattery);
    tickWith(PowerSample{.systemLoad = 20, .battery = -20, .batteryPercent = 54});
    EXPECT_EQ(app->menu().entries()[0].title, "Mac using: 7.2 W");
}

TEST_F(AppDelegateTest, OnceTheMenuHasClosedItsFiguresStayAsTheyWere)
{
    preferences.set(Pref::smoothing, false);
    launchWith(kOnBattery);
    click(ClickButton::Right);
    tickWith(PowerSample{.systemLoad = 9, .battery = -9, .batteryPercent = 54});
    ASSERT_EQ(app->menu().entries()[0].title, "Mac using: 9.0 W");
    platform.statusItem.closeMenu();
    tickWith(PowerSample{.systemLoad = 20, .battery = -20, .batteryPercent = 54});
    EXPECT_EQ(app->menu().entries()[0].title, "Mac using: 9.0 W");
    EXPECT_EQ(app->menu().entries()[2].title, "Battery draining: 9.0 W (54%)");
}

TEST_F(AppDelegateTest, TheClosedMenusLinesComeAndGoWithTheCharger)
{
    launchWith(kOnBattery);
    EXPECT_FALSE(app->menu().entries()[3].visible);
    tickWith(kCharging);
    EXPECT_TRUE(app->menu().entries()[3].visible);
    tickWith(std::nullopt);
    EXPECT_FALSE(app->menu().entries()[1].visible);
}

TEST_F(AppDelegateTest, TheMenuOpensWithAFreshReading)
{
    preferences.set(Pref::smoothing, false);
    launchWith(kOnBattery);
    readings.give(kCharging);
    click(ClickButton::Right);
    EXPECT_EQ(readings.readings(), 2);
    EXPECT_EQ(menuTitles()[0], "Mac using: 14.2 W");
}

TEST_F(AppDelegateTest, AMenuThatTheDesktopOpensByItselfIsFreshToo)
{
    preferences.set(Pref::smoothing, false);
    launchWith(kOnBattery);
    readings.give(kCharging);
    platform.statusItem.openMenu(std::nullopt);
    EXPECT_EQ(readings.readings(), 2);
    EXPECT_EQ(menuTitles()[0], "Mac using: 14.2 W");
}

TEST_F(AppDelegateTest, TheMenusCommandsDoWhatTheySay)
{
    launch();
    click(ClickButton::Right);
    EXPECT_TRUE(platform.statusItem.choose("Buy Me a Coffee ☕"));
    EXPECT_THAT(platform.desktop.openedAddresses(), ElementsAre(std::string(Pref::coffeeURL())));

    click(ClickButton::Right);
    EXPECT_TRUE(platform.statusItem.choose("Settings…"));
    ASSERT_NE(app->settingsWindow(), nullptr);
    EXPECT_TRUE(app->settingsWindow()->isVisible());

    click(ClickButton::Right);
    EXPECT_TRUE(platform.statusItem.choose("Quit Amperly"));
    EXPECT_TRUE(platform.desktop.quitRequested());
}

// Settings window

TEST_F(AppDelegateTest, StartingTheProgramAgainShowsTheSettings)
{
    launch();
    platform.desktop.reopen();
    ASSERT_NE(app->settingsWindow(), nullptr);
    EXPECT_TRUE(app->settingsWindow()->isVisible());
    EXPECT_EQ(app->settingsWindow()->windowTitle(), "Amperly Settings");
    EXPECT_EQ(platform.desktop.activations(), 1);
}

TEST_F(AppDelegateTest, TheSettingsWindowIsMadeOnceAndKeepsItsPlace)
{
    launch();
    app->openSettings();
    QWidget* const window = app->settingsWindow();
    window->resize(500, 600);
    window->close();
    EXPECT_FALSE(window->isVisible());
    app->openSettings();
    EXPECT_EQ(app->settingsWindow(), window);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->size(), QSize(500, 600));
}

TEST_F(AppDelegateTest, TheSettingsWindowLeavesRoomOnTheScreenAndIsNeverTallerThanItsForm)
{
    EXPECT_EQ(SettingsWindow::initialHeight(1000), 880);
    EXPECT_EQ(SettingsWindow::initialHeight(700), 640);
    EXPECT_EQ(SettingsWindow::initialHeight(std::nullopt), 740);

    platform.desktop.setVisibleScreenHeight(700);
    launch();
    app->openSettings();
    EXPECT_EQ(app->settingsWindow()->size(), QSize(420, 640));
}

TEST_F(AppDelegateTest, TheSettingsWindowCanBeClosedAndResizedButNotMinimised)
{
    launch();
    app->openSettings();
    const Qt::WindowFlags flags = app->settingsWindow()->windowFlags();
    EXPECT_TRUE(flags.testFlag(Qt::WindowCloseButtonHint));
    EXPECT_FALSE(flags.testFlag(Qt::WindowMinimizeButtonHint));
}

// The user's ways

TEST_F(AppDelegateTest, ANewLocaleWritesEveryNumberAnew)
{
    launchWith(kCharging);
    click(ClickButton::Left);
    app->openSettings();
    const NumberEnvironment german{"de_DE.UTF-8"};
    app->localeChanged();
    QApplication::processEvents();
    EXPECT_EQ(platform.statusItem.shown()->toolTip, "Mac using 14,2 W");
    EXPECT_EQ(app->menu().entries()[0].title, "Mac using: 14,2 W");
    QStringList spoken;
    for (QWidget* const widget : QApplication::allWidgets())
        spoken += widget->accessibleName();
    EXPECT_THAT(spoken.join(QLatin1Char('\n')).toStdString(), testing::HasSubstr("Mac is using 14,2 W"));
    EXPECT_THAT(spoken.join(QLatin1Char('\n')).toStdString(), testing::Not(testing::HasSubstr("14.2 W")));

    const NumberEnvironment english{"en_US.UTF-8"};
    app->localeChanged();
    EXPECT_EQ(platform.statusItem.shown()->toolTip, "Mac using 14.2 W");
}

TEST_F(AppDelegateTest, EveryWidgetHearsOfAnotherWishForDisplays)
{
    class Listener : public QWidget {
    public:
        int changes = 0;

    protected:
        void changeEvent(QEvent* event) override
        {
            changes += event->type() == QEvent::PaletteChange ? 1 : 0;
        }
    };
    Listener window;
    launch();
    window.changes = 0;
    app->appearanceChanged();
    EXPECT_EQ(window.changes, 1);
}

} // namespace
} // namespace amperly
