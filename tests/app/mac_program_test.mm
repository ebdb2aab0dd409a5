// The whole program on a pretend Mac, from the kernel's figures to what the menu bar shows.

#include "app/mac_program.h"

#include "platform/simulated/desktop/fixed_ui_font.h"
#include "prefs/pref.h"
#include "telemetry/smc.h"
#include "tests/platform/macos/fakes/fake_desktop_test.h"
#include "tests/platform/macos/fakes/fake_machine.h"
#include "tests/support/number_environment.h"

#include <QApplication>
#include <QWidget>

#include <cstring>

namespace amperly {
namespace {

using fake_mac::kLeft;
using fake_mac::kRight;
using testing::ElementsAre;

const NumberEnvironment kNumbers{"en_US.UTF-8"};

class MacProgramTest : public FakeDesktopTest {
protected:
    MacProgramTest()
    {
        fake_mac::resetMachine();
        fake_mac::machine().services["AppleSmartBattery"] = {
            {"ExternalConnected", true},
            {"AdapterDetails", fake_mac::Dictionary{{"Watts", 140}}},
            {"CurrentCapacity", 64},
        };
        fake_mac::machine().services["AppleSMC"];
        setLoad(14.0F);
        setKey("SBAP", -16.0F);
        setKey("PDTR", 30.0F);
    }

    void TearDown() override
    {
        program.reset();
        application.reset();
        runEventLoop();
        const fake_mac::Audit audit = fake_mac::audit();
        EXPECT_EQ(audit.coreFoundationObjects, 0);
        EXPECT_EQ(audit.kernelObjects, 0);
        EXPECT_EQ(audit.connections, 0);
        EXPECT_THAT(audit.violations, testing::IsEmpty());
        fake_mac::resetMachine();
        FakeDesktopTest::TearDown();
    }

    void launch()
    {
        program.reset();
        application.reset();
        application.emplace();
        program.emplace(*application, font,
            [view = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 1, 1)]](QWidget&) { return view; });
        program->start();
    }

    static void setKey(std::string_view name, float watts)
    {
        fake_mac::Data bytes(sizeof watts);
        std::memcpy(bytes.data(), &watts, sizeof watts);
        fake_mac::machine().smcKeys[keyCode(name)] = {.type = kFloatTypeCode, .bytes = bytes};
    }
    static void setLoad(float watts) { setKey("PSTR", watts); }

    static void runEventLoop()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    QWidget* settingsWindow() { return program->delegate().settingsWindow(); }

    FixedUiFont font{{AMPERLY_PINNED_FONT, 0}, {AMPERLY_PINNED_FONT, 0}};
    std::optional<AccessoryApplication> application;
    std::optional<MacProgram> program;
};

// Start-up

TEST_F(MacProgramTest, TheFirstReadingIsThereAtOnce)
{
    launch();
    EXPECT_EQ(stage.item.toolTip, "Mac using 14.0 W");
    EXPECT_GT(stage.item.width, 20.0);
    EXPECT_EQ(stage.item.height, 24.0); // as the bar
    EXPECT_TRUE(stage.item.isTemplate);
}

TEST_F(MacProgramTest, EveryTickShowsTheNextReadingAlsoWhileAMenuIsOpen)
{
    launch();
    setLoad(16.0F);
    fake_mac::click(kRight, [this] {
        fake_mac::advance(2.0);
        EXPECT_EQ(stage.item.toolTip, "Mac using 15.5 W"); // the click read once, the tick again
        return std::nullopt;
    });
}

TEST_F(MacProgramTest, TheTimerGoesByTheInterval)
{
    launch();
    EXPECT_EQ(program->delegate().timer()->intervalSeconds(), 2.0);
    EXPECT_EQ(stage.timerTolerance, 0.5);
}

TEST_F(MacProgramTest, AnInstalledProgramRegistersForLoginOnce)
{
    launch();
    EXPECT_EQ(stage.system.loginStatus, 1);
    EXPECT_EQ(fake_mac::storedValue("loginItemConfigured"), fake_mac::Stored(true));
    stage.system.loginStatus = 0; // the user took it back
    launch();
    EXPECT_EQ(stage.system.loginStatus, 0);
}

TEST_F(MacProgramTest, FromAnotherFolderItNeverRegisters)
{
    stage.system.bundlePath = "/Users/ada/Downloads/Amperly.app";
    launch();
    EXPECT_EQ(stage.system.loginStatus, 0);
    EXPECT_EQ(fake_mac::storedValue("loginItemConfigured"), fake_mac::Stored());
}

TEST_F(MacProgramTest, AFailedRegistrationIsOneLineInTheLog)
{
    stage.system.loginFailure = "Operation not permitted";
    launch();
    EXPECT_EQ(stage.application.log, "Amperly: couldn't enable launch at login: Operation not permitted\n");
    EXPECT_EQ(fake_mac::storedValue("loginItemConfigured"), fake_mac::Stored());
}

// Clicks

TEST_F(MacProgramTest, ALeftClickOpensThePanelAndTheNextClosesIt)
{
    launch();
    fake_mac::click(kLeft);
    EXPECT_TRUE(stage.popover.isShown);
    EXPECT_EQ(stage.application.activations, 1);
    fake_mac::click(kLeft); // its press closes, its release must not open again
    EXPECT_FALSE(stage.popover.isShown);
    EXPECT_EQ(stage.popover.showings, 1);
    fake_mac::advance(1.0);
    fake_mac::click(kLeft);
    EXPECT_EQ(stage.popover.showings, 2);
}

TEST_F(MacProgramTest, ARightClickOpensTheMenu)
{
    launch();
    fake_mac::click(kRight);
    EXPECT_EQ(stage.menuOpenings, 1);
    EXPECT_EQ(stage.popover.showings, 0);
    EXPECT_FALSE(stage.item.hasMenu);
}

TEST_F(MacProgramTest, ARightClickWhileThePanelIsOpenClosesItAndOpensTheMenu)
{
    launch();
    fake_mac::click(kLeft);
    fake_mac::click(kRight);
    EXPECT_FALSE(stage.popover.isShown);
    EXPECT_EQ(stage.menuOpenings, 1);
}

TEST_F(MacProgramTest, ALeftClickOpensTheMenuWhereTheUserWantsThat)
{
    launch();
    fake_mac::writeFromElsewhere("clickShows", std::string("menu"));
    fake_mac::click(kLeft);
    EXPECT_EQ(stage.menuOpenings, 1);
    fake_mac::writeFromElsewhere("clickShows", std::string("Menu"));
    fake_mac::click(kLeft);
    EXPECT_EQ(stage.menuOpenings, 1);
    EXPECT_TRUE(stage.popover.isShown);
}

TEST_F(MacProgramTest, AssistiveTechnologiesOpenThePanel)
{
    launch();
    fake_mac::pressByAccessibility();
    EXPECT_TRUE(stage.popover.isShown);
}

TEST_F(MacProgramTest, WithoutAButtonAClickOpensNothing)
{
    stage.system.givesButton = false;
    launch();
    fake_mac::click(kLeft);
    program->delegate().togglePanel({.button = ClickButton::Left, .anchor = {}});
    EXPECT_EQ(stage.popover.showings, 0);
}

// The menu

TEST_F(MacProgramTest, TheMenuListsFreshReadingsAndCommands)
{
    launch();
    setLoad(16.0F);
    fake_mac::click(kRight);
    using Row = fake_mac::MenuRow;
    const auto reading = [](const char* title) { return Row{.title = title, .enabled = false}; };
    EXPECT_THAT(stage.menu,
        ElementsAre(reading("Mac using: 15.0 W"), reading("From charger: 30.0 W"), testing::_,
            reading("Charger: 140 W"), Row{.separator = true}, Row{.title = "Settings…", .shortcut = ","},
            Row{.title = "Buy Me a Coffee ☕"}, Row{.title = "Quit Amperly", .shortcut = "q"}));
}

TEST_F(MacProgramTest, WithoutAnyReadingTheMenuSaysSo)
{
    fake_mac::machine().services.clear();
    launch();
    fake_mac::click(kRight);
    EXPECT_EQ(stage.menu.front().title, "No power data available");
    EXPECT_EQ(stage.menu.size(), 5U);
    EXPECT_EQ(stage.item.toolTip, std::nullopt);
    EXPECT_EQ(stage.item.spokenLabel, "Amperly: no power data");
}

TEST_F(MacProgramTest, CommandsDoWhatTheySay)
{
    launch();
    fake_mac::click(kRight, [] { return 7; });
    EXPECT_EQ(stage.application.terminations, 1);
    fake_mac::click(kRight, [] { return 6; });
    EXPECT_THAT(stage.application.opened, ElementsAre(Pref::coffeeURL()));
    fake_mac::click(kRight, [] { return 5; });
    ASSERT_NE(settingsWindow(), nullptr);
    EXPECT_TRUE(settingsWindow()->isVisible());
}

// The panel

TEST_F(MacProgramTest, WhileThePanelIsOpenTheTimerGoesFaster)
{
    launch();
    fake_mac::click(kLeft);
    EXPECT_EQ(program->delegate().timer()->intervalSeconds(), 1.0);
    EXPECT_EQ(stage.timerTolerance, 0.25);
    fake_mac::pressElsewhere();
    runEventLoop();
    EXPECT_EQ(program->delegate().timer()->intervalSeconds(), 2.0);
}

TEST_F(MacProgramTest, ThePanelMovesWithTheDisplayForAsLongAsItIsOpen)
{
    launch();
    EXPECT_EQ(stage.displayLinks, 0);
    fake_mac::click(kLeft);
    EXPECT_EQ(stage.displayLinks, 1);
    fake_mac::showFrame(1.0);
    fake_mac::showFrame(1.1);
    fake_mac::pressElsewhere();
    runEventLoop();
    EXPECT_EQ(stage.displayLinks, 0);
}

TEST_F(MacProgramTest, NothingMovesForThoseWhoAskForThat)
{
    stage.system.reducesMotion = true;
    launch();
    fake_mac::click(kLeft);
    EXPECT_TRUE(stage.popover.isShown);
    EXPECT_EQ(stage.displayLinks, 0);
}

// The settings window

TEST_F(MacProgramTest, OpeningTheProgramAgainShowsTheSettings)
{
    launch();
    EXPECT_FALSE(fake_mac::reopenApplication());
    ASSERT_NE(settingsWindow(), nullptr);
    EXPECT_TRUE(settingsWindow()->isVisible());
    EXPECT_EQ(stage.application.activations, 1);
}

TEST_F(MacProgramTest, TheSettingsWindowFitsTheScreen)
{
    stage.system.visibleScreenHeight = 700.0;
    launch();
    static_cast<void>(fake_mac::reopenApplication());
    EXPECT_EQ(settingsWindow()->windowTitle(), QStringLiteral("Amperly Settings"));
    EXPECT_EQ(settingsWindow()->size(), QSize(420, 640));
    EXPECT_TRUE(settingsWindow()->windowFlags().testFlag(Qt::WindowCloseButtonHint));
    EXPECT_FALSE(settingsWindow()->windowFlags().testFlag(Qt::WindowMinimizeButtonHint));
}

// The user's ways

TEST_F(MacProgramTest, AnotherRegionsNumbersShowAtOnce)
{
    launch();
    fake_mac::click(kLeft);
    const NumberEnvironment german{"de_DE.UTF-8"};
    fake_mac::changeLocale("de_DE");
    EXPECT_EQ(stage.item.toolTip, "Mac using 14,0 W");
    EXPECT_THAT(stage.item.spokenLabel, testing::HasSubstr("14,0 W"));
    EXPECT_EQ(program->delegate().menu().entries()[0].title, "Mac using: 14,0 W");
    const NumberEnvironment english{"en_US.UTF-8"};
    fake_mac::changeLocale("en_US");
    EXPECT_EQ(stage.item.toolTip, "Mac using 14.0 W");
}

TEST_F(MacProgramTest, AnOpenPanelComesToRestForThoseWhoAskForThat)
{
    launch();
    fake_mac::click(kLeft);
    EXPECT_EQ(stage.displayLinks, 1);
    fake_mac::changeDisplaySettings(true, false);
    EXPECT_EQ(stage.displayLinks, 0);
    fake_mac::changeDisplaySettings(false, false);
    EXPECT_EQ(stage.displayLinks, 1);
}

// Preferences

TEST_F(MacProgramTest, APreferenceThatAnotherProcessWritesShowsAtOnce)
{
    launch();
    const double width = stage.item.width;
    fake_mac::writeFromElsewhere("stackedLayout", false);
    fake_mac::runMainQueue();
    EXPECT_GT(stage.item.width, width);
}

TEST_F(MacProgramTest, AnIntervalThatAnotherProcessWritesCountsAtOnce)
{
    launch();
    fake_mac::writeFromElsewhere("updateInterval", 5.0);
    fake_mac::runMainQueue();
    EXPECT_EQ(program->delegate().timer()->intervalSeconds(), 5.0);
    EXPECT_EQ(stage.timers, 1);
}

TEST_F(MacProgramTest, AThousandTicksHoldOneConnection)
{
    launch();
    fake_mac::advance(2000.0);
    EXPECT_EQ(fake_mac::audit().connections, 1);
    EXPECT_EQ(fake_mac::audit().coreFoundationObjects, 0);
    EXPECT_EQ(fake_mac::audit().kernelObjects, 0);
}

} // namespace
} // namespace amperly
