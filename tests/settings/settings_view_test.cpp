#include "settings/settings_view.h"

#include "settings/mnemonic.h"
#include "tests/settings/settings_form.h"

#include <QLabel>
#include <QMessageBox>
#include <QScrollArea>
#include <QTimer>

#include <algorithm>
#include <gmock/gmock.h>

Q_GUI_EXPORT void qt_set_sequence_auto_mnemonic(bool enabled); // the toolkit's, for tests such as these

namespace amperly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const PowerSample kOnBattery{.systemLoad = 7.25, .battery = -7.25, .batteryPercent = 55};

class SettingsViewTest : public SettingsFormTest {
protected:
    /// The texts of the form from top to bottom, each row from its beginning to its end.
    std::vector<std::string> texts()
    {
        QWidget& form = *view->findChild<QScrollArea*>()->widget();
        struct Text {
            int top;
            std::string words;
        };
        std::vector<Text> found;
        for (QLabel* const each : view->findChildren<QLabel*>()) {
            if (each->isVisible())
                found.push_back({each->mapTo(&form, QPoint()).y(), each->text().remove(u'&').toStdString()});
        }
        std::stable_sort(found.begin(), found.end(),
            [](const Text& one, const Text& other) { return one.top < other.top; });
        std::vector<std::string> words;
        for (const Text& each : found)
            words.push_back(each.words);
        return words;
    }

    static std::vector<std::string> options(const Picker& picker)
    {
        std::vector<std::string> words;
        for (int each = 0; each < picker.count(); ++each)
            words.push_back(picker.itemText(each).toStdString());
        return words;
    }

    static std::vector<std::string> options(const SegmentedControl& control)
    {
        std::vector<std::string> words;
        for (const QAbstractButton* const each : control.segments())
            words.push_back(each->text().toStdString());
        return words;
    }

    /// What the next alert says; it is dismissed.
    void dismissAlert()
    {
        QTimer::singleShot(0, view.get(), [this] {
            auto* const alert = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(alert, nullptr);
            alertText = alert->text().toStdString();
            alert->accept();
        });
    }

    /// The user comes back from another program.
    static void activateApplication() { Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive); }

    std::string alertText;
};

// What there is

TEST_F(SettingsViewTest, TheFormReadsFromTopToBottomAsItShould)
{
    loginItem.setStatus(LoginItemStatus::RequiresApproval);
    open();
    EXPECT_THAT(texts(),
        ElementsAre("Menu bar space next to the notch is limited. If Amperly disappears, macOS has moved it "
                    "behind the « "
                    "button. Use the Stacked layout, show fewer readings, or try the compact options. Open "
                    "Amperly from "
                    "Spotlight to get back here.",
            "Readings", "Mac power usage", "Charger input", "Battery charging / draining", "Mac icon",
            "Hide battery when idle", "Format", "Layout", "Decimals", "Show \"W\" unit", "Larger text",
            "Compact spacing", "General", "Launch at login", "Needs approval in Login Items.", "Update every",
            "Smooth readings", "Click shows", "Right-click Amperly for the simple menu any time.",
            "Amperly 1.2.3 is free."));
    EXPECT_EQ(button("☕ Buy me a coffee").text(), QStringLiteral("☕ Buy me a coffee"));
    EXPECT_TRUE(button("Reset to Defaults").isVisible());
    EXPECT_TRUE(button("Open Settings…").isVisible());
}

TEST_F(SettingsViewTest, PickersOfferTheirRowsInOrder)
{
    open();
    for (const char* const title : {"Mac power usage", "Charger input", "Battery charging / draining"})
        EXPECT_THAT(options(picker(title)), ElementsAre("Icon + value", "Value only", "Icon only", "Hidden"));
    EXPECT_THAT(options(picker("Mac icon")), ElementsAre("Laptop", "Bolt", "Gauge", "Chip", "Plug"));
    EXPECT_FALSE(picker("Mac icon").itemIcon(4).isNull());
    EXPECT_THAT(options(picker("Update every")), ElementsAre("1 second", "2 seconds", "5 seconds"));
    EXPECT_THAT(options(picker("Click shows")), ElementsAre("Power flow panel", "Simple menu"));
    EXPECT_THAT(options(segments("Layout")), ElementsAre("Stacked", "Single line"));
    EXPECT_THAT(options(segments("Decimals")), ElementsAre("None", "One"));
}

TEST_F(SettingsViewTest, WithoutAVersionTheSentenceStandsAsItIs)
{
    desktop.setShortVersion(std::nullopt);
    open();
    EXPECT_EQ(texts().back(), "Amperly  is free.");
}

// Writing

TEST_F(SettingsViewTest, EveryControlWritesItsOwnKey)
{
    open();
    picker("Mac power usage").setCurrentIndex(1);
    picker("Charger input").setCurrentIndex(2);
    picker("Battery charging / draining").setCurrentIndex(3);
    picker("Mac icon").setCurrentIndex(2);
    click(toggle("Hide battery when idle"));
    choose(segments("Decimals"), 0);
    click(toggle("Show \"W\" unit"));
    click(toggle("Larger text"));
    click(toggle("Compact spacing"));
    picker("Update every").setCurrentIndex(2);
    click(toggle("Smooth readings"));
    picker("Click shows").setCurrentIndex(1);
    choose(segments("Layout"), 1);

    EXPECT_EQ(preferences.text("macStyle"), "valueOnly");
    EXPECT_EQ(preferences.text("chargerStyle"), "iconOnly");
    EXPECT_EQ(preferences.text("batteryStyle"), "hidden");
    EXPECT_EQ(preferences.text("macIcon"), "gauge.with.dots.needle.50percent");
    EXPECT_TRUE(preferences.boolean("hideIdleBattery"));
    EXPECT_EQ(preferences.integer("decimals"), 0);
    EXPECT_TRUE(preferences.boolean("showUnitStacked"));
    EXPECT_TRUE(preferences.boolean("largeText"));
    EXPECT_TRUE(preferences.boolean("compactSpacing"));
    EXPECT_EQ(preferences.real("updateInterval"), 5.0);
    EXPECT_FALSE(preferences.boolean("smoothing"));
    EXPECT_EQ(preferences.text("clickShows"), "menu");
    EXPECT_FALSE(preferences.boolean("stackedLayout"));
}

TEST_F(SettingsViewTest, EachLayoutKeepsItsOwnUnit)
{
    open();
    ToggleSwitch& unit = toggle("Show \"W\" unit");
    EXPECT_FALSE(unit.isChecked());
    click(unit);
    EXPECT_TRUE(preferences.boolean(Pref::showUnitStacked));
    EXPECT_TRUE(preferences.boolean(Pref::showUnit)) << "its default";

    choose(segments("Layout"), 1);
    EXPECT_TRUE(unit.isChecked());
    click(unit);
    EXPECT_FALSE(preferences.boolean(Pref::showUnit));
    EXPECT_TRUE(preferences.boolean(Pref::showUnitStacked));

    choose(segments("Layout"), 0);
    EXPECT_TRUE(unit.isChecked());
}

TEST_F(SettingsViewTest, OpeningAndLookingStoresNothing)
{
    int changes = 0;
    const Subscription counting = preferences.onDidChange([&changes] { ++changes; });
    open();
    view->hide();
    view->show();
    EXPECT_EQ(changes, 0);
}

// Following

TEST_F(SettingsViewTest, ControlsFollowChangesMadeElsewhere)
{
    open();
    preferences.set(Pref::macStyle, std::string("hidden"));
    preferences.set(Pref::macIcon, std::string("cpu"));
    preferences.set(Pref::interval, 1.0);
    preferences.set(Pref::largeText, true);
    preferences.set(Pref::decimals, std::int64_t{0});
    EXPECT_EQ(picker("Mac power usage").currentText(), QStringLiteral("Hidden"));
    EXPECT_EQ(picker("Mac icon").currentText(), QStringLiteral("Chip"));
    EXPECT_EQ(picker("Update every").currentText(), QStringLiteral("1 second"));
    EXPECT_TRUE(toggle("Larger text").isChecked());
    EXPECT_EQ(segments("Decimals").choice(), 0);
}

TEST_F(SettingsViewTest, AHiddenFormFollowsNothingAndCatchesUpWhenShown)
{
    open();
    view->hide();
    const StatusImage before = preview().image();
    preferences.set(Pref::largeText, true);
    live.setSample(kOnBattery);
    QApplication::processEvents();
    EXPECT_FALSE(toggle("Larger text").isChecked());
    EXPECT_EQ(preview().image(), before);
    view->show();
    EXPECT_TRUE(toggle("Larger text").isChecked());
    EXPECT_NE(preview().image(), before);
}

TEST_F(SettingsViewTest, AStoreThatChangesAfterTheFormIsGoneFindsNobody)
{
    open();
    view.reset();
    preferences.set(Pref::largeText, true);
    live.setSample(kOnBattery);
    QApplication::processEvents();
    EXPECT_TRUE(preferences.boolean(Pref::largeText));
}

TEST_F(SettingsViewTest, ValuesThatAreNoOptionSelectNothingAndStayStored)
{
    preferences.set(Pref::decimals, std::int64_t{2});
    preferences.set(Pref::interval, 3.0);
    preferences.set(Pref::macIcon, std::string("desktopcomputer"));
    preferences.set(Pref::clickShows, std::string("Menu"));
    preferences.set(Pref::macStyle, std::string("Hidden"));
    open();
    EXPECT_EQ(segments("Decimals").choice(), std::nullopt);
    for (const char* const title : {"Update every", "Mac icon", "Click shows", "Mac power usage"})
        EXPECT_EQ(picker(title).choice(), std::nullopt) << title;
    EXPECT_EQ(preferences.integer(Pref::decimals), 2);
    EXPECT_EQ(preferences.real(Pref::interval), 3.0);
    EXPECT_EQ(preferences.text(Pref::macIcon), "desktopcomputer");
    EXPECT_EQ(preferences.text(Pref::clickShows), "Menu");
    EXPECT_EQ(preferences.text(Pref::macStyle), "Hidden");
}

// Preview

TEST_F(SettingsViewTest, ThePreviewChangesWithEveryPreferenceAtOnce)
{
    live.setSample(kOnBattery);
    open();
    StatusImage before = preview().image();
    const auto changed = [&] {
        const bool differs = !(preview().image() == before);
        before = preview().image();
        return differs;
    };
    click(toggle("Larger text"));
    EXPECT_TRUE(changed());
    picker("Mac icon").setCurrentIndex(3);
    EXPECT_TRUE(changed());
    choose(segments("Decimals"), 0);
    EXPECT_TRUE(changed());
    preferences.set(Pref::batteryStyle, std::string("hidden"));
    EXPECT_TRUE(changed());
    choose(segments("Layout"), 1);
    EXPECT_TRUE(changed());
}

TEST_F(SettingsViewTest, ThePreviewFollowsTheReadingsAndIsReadAloudLikeTheStatusItem)
{
    open();
    EXPECT_EQ(preview().accessibleName(), QStringLiteral("Amperly: no power data"));
    EXPECT_EQ(preview().image().readingText(0), "–");
    live.setSample(kOnBattery);
    QApplication::processEvents();
    EXPECT_EQ(preview().accessibleName(), QStringLiteral("Mac using 7.2 W, Battery draining: 7.2 W (55%)"));
    EXPECT_EQ(preview().image().readingText(0), "7.2");
    live.setSample(std::nullopt);
    QApplication::processEvents();
    EXPECT_EQ(preview().image().readingText(0), "–");
}

// Launch at login

TEST_F(SettingsViewTest, LaunchAtLoginShowsWhatTheDesktopSays)
{
    loginItem.setStatus(LoginItemStatus::Enabled);
    open();
    ToggleSwitch& launch = toggle("Launch at login");
    EXPECT_TRUE(launch.isChecked());
    click(launch);
    EXPECT_FALSE(launch.isChecked());
    EXPECT_EQ(loginItem.unregistrations(), 1);
    click(launch);
    EXPECT_TRUE(launch.isChecked());
    EXPECT_EQ(loginItem.registrations(), 1);
}

TEST_F(SettingsViewTest, AnItemThatIsNotFoundIsOffAndNeedsNoApproval)
{
    loginItem.setStatus(LoginItemStatus::NotFound);
    open();
    EXPECT_FALSE(toggle("Launch at login").isChecked());
    EXPECT_FALSE(button("Open Settings…").isVisible());
}

TEST_F(SettingsViewTest, WhereApprovalIsNeededTheSwitchStaysOffUntilTheUserComesBackWithIt)
{
    loginItem.requireApproval();
    open();
    ToggleSwitch& launch = toggle("Launch at login");
    EXPECT_FALSE(button("Open Settings…").isVisible());
    click(launch);
    EXPECT_FALSE(launch.isChecked());
    EXPECT_TRUE(button("Open Settings…").isVisible());
    click(button("Open Settings…"));
    EXPECT_EQ(loginItem.settingsOpenings(), 1);

    loginItem.setStatus(LoginItemStatus::Enabled);
    activateApplication();
    EXPECT_TRUE(launch.isChecked());
    EXPECT_FALSE(button("Open Settings…").isVisible());
}

TEST_F(SettingsViewTest, AFailureIsAnAlertAndTheSwitchShowsHowThingsAre)
{
    loginItem.failWith("Couldn't write /home/user/.config/autostart: No space left on device");
    open();
    dismissAlert();
    click(toggle("Launch at login"));
    EXPECT_EQ(alertText, "Couldn't write /home/user/.config/autostart: No space left on device");
    EXPECT_FALSE(toggle("Launch at login").isChecked());
}

// Reset and link

TEST_F(SettingsViewTest, ResetShowsEveryDefaultAgainAndForgetsNothingElse)
{
    preferences.set(Pref::loginItemConfigured, true);
    loginItem.setStatus(LoginItemStatus::Enabled);
    open();
    picker("Mac power usage").setCurrentIndex(3);
    picker("Mac icon").setCurrentIndex(1);
    choose(segments("Layout"), 1);
    click(toggle("Show \"W\" unit"));
    picker("Update every").setCurrentIndex(0);
    click(toggle("Smooth readings"));
    click(button("Reset to Defaults"));

    for (const auto& [key, value] : Pref::defaults())
        EXPECT_EQ(preferences.text(key), asText(value)) << key;
    EXPECT_EQ(picker("Mac power usage").choice(), 0);
    EXPECT_EQ(picker("Mac icon").choice(), 0);
    EXPECT_EQ(segments("Layout").choice(), 0);
    EXPECT_EQ(segments("Decimals").choice(), 1);
    EXPECT_FALSE(toggle("Show \"W\" unit").isChecked());
    EXPECT_EQ(picker("Update every").choice(), 1);
    EXPECT_TRUE(toggle("Smooth readings").isChecked());
    EXPECT_EQ(picker("Click shows").choice(), 0);

    EXPECT_TRUE(preferences.boolean(Pref::loginItemConfigured));
    EXPECT_EQ(loginItem.registrations() + loginItem.unregistrations(), 0);
    EXPECT_TRUE(toggle("Launch at login").isChecked());
}

TEST_F(SettingsViewTest, ResetWithNothingStoredChangesNothing)
{
    open();
    int changes = 0;
    const Subscription counting = preferences.onDidChange([&changes] { ++changes; });
    const StatusImage before = preview().image();
    click(button("Reset to Defaults"));
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(preview().image(), before);
}

TEST_F(SettingsViewTest, TheLinkOpensTheDonationPage)
{
    open();
    click(button("☕ Buy me a coffee"));
    EXPECT_THAT(desktop.openedAddresses(), ElementsAre(Pref::coffeeURL()));
}

TEST_F(SettingsViewTest, LettersAreUnderlinedWhileAltIsHeld)
{
    open();
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Alt, Qt::AltModifier);
    QApplication::sendEvent(view.get(), &down);
    EXPECT_EQ(mnemonicFlag(*view), Qt::TextShowMnemonic);
    QKeyEvent up(QEvent::KeyRelease, Qt::Key_Alt, Qt::NoModifier);
    QApplication::sendEvent(view.get(), &up);
    EXPECT_EQ(mnemonicFlag(*view), Qt::TextHideMnemonic);
}

TEST_F(SettingsViewTest, WhereTheDesktopHasNoSuchLettersNoneAreUnderlined)
{
    qt_set_sequence_auto_mnemonic(false);
    open();
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Alt, Qt::AltModifier);
    QApplication::sendEvent(view.get(), &down);
    EXPECT_EQ(mnemonicFlag(*view), Qt::TextHideMnemonic);
    qt_set_sequence_auto_mnemonic(true);
}

} // namespace
} // namespace amperly
