#include "app/app_delegate.h"

#include "app/settings_window.h"
#include "flow/flow_panel.h"
#include "prefs/pref.h"
#include "render/number_locale.h"
#include "render/status_image.h"
#include "render/status_renderer.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include <cmath>
#include <string>
#include <utility>

namespace amperly {
namespace {

/// Tells every widget of a change, and has it painted anew.
void tellWidgets(QEvent::Type type)
{
    for (QWidget* const widget : QApplication::allWidgets()) {
        QEvent change(type);
        QCoreApplication::sendEvent(widget, &change);
        widget->update();
    }
}

} // namespace

AppDelegate::AppDelegate(const Platform& platform)
    : m_platform(platform), m_defaults(platform.preferences), m_self(std::make_shared<AppDelegate*>(this))
{
}

AppDelegate::~AppDelegate() = default;

std::function<void()> AppDelegate::whileAlive(void (AppDelegate::*operation)())
{
    return [self = std::weak_ptr(m_self), operation] {
        if (const auto alive = self.lock())
            ((*alive)->*operation)();
    };
}

void AppDelegate::applicationDidFinishLaunching()
{
    m_defaults.registerDefaults(Pref::defaults());
    registerLoginItemOnce();
    buildMenu();
    m_platform.popover.onDidClose(whileAlive(&AppDelegate::popoverDidClose));
    m_platform.desktop.onReopen(whileAlive(&AppDelegate::applicationShouldHandleReopen));
    m_platform.statusItem.setMenu(m_menu);
    m_platform.statusItem.onClick([self = std::weak_ptr(m_self)](const StatusClick& click) {
        if (const auto alive = self.lock())
            (*alive)->togglePanel(click);
    });
    m_platform.statusItem.onPictureWanted(whileAlive(&AppDelegate::redraw));
    m_settingsSubscription = m_defaults.onDidChange([this] { settingsChanged(); });
    scheduleTimer();
    update();
}

void AppDelegate::applicationShouldHandleReopen()
{
    openSettings();
}

void AppDelegate::registerLoginItemOnce()
{
    if (m_defaults.boolean(Pref::loginItemConfigured) || !m_platform.desktop.isInstalled())
        return;
    if (const LoginItem::Failure failure = m_platform.loginItem.registerUnasked())
        m_platform.desktop.log("Amperly: couldn't enable launch at login: " + *failure);
    else
        m_defaults.set(Pref::loginItemConfigured, true);
}

void AppDelegate::buildMenu()
{
    const auto addReading = [this] {
        MenuEntry entry;
        entry.enabled = false;
        return m_menu.add(std::move(entry));
    };
    const auto addCommand = [this](std::string title, char shortcut, std::function<void()> action) {
        MenuEntry entry;
        entry.title = std::move(title);
        entry.shortcut = shortcut;
        entry.activate = std::move(action);
        m_menu.add(std::move(entry));
    };

    m_loadItem = addReading();
    m_adapterItem = addReading();
    m_batteryItem = addReading();
    m_chargerItem = addReading();
    MenuEntry separator;
    separator.separator = true;
    m_menu.add(std::move(separator));
    addCommand("Settings…", ',', whileAlive(&AppDelegate::openSettings));
    addCommand("Buy Me a Coffee ☕", 0, whileAlive(&AppDelegate::openCoffee));
    addCommand("Quit Amperly", 'q', [&desktop = m_platform.desktop] { desktop.quit(); });
    m_menu.willOpen = whileAlive(&AppDelegate::menuWillOpen);
    m_menu.didClose = whileAlive(&AppDelegate::menuDidClose);
}

double AppDelegate::effectiveIntervalSeconds() const
{
    constexpr double kShortest = 0.5;
    constexpr double kLongestWhilePanelShows = 1.0;

    // fmax takes the other operand where one is not a number.
    const double interval = std::fmax(m_defaults.real(Pref::interval), kShortest);
    if (m_platform.popover.isShown() && interval > kLongestWhilePanelShows)
        return kLongestWhilePanelShows;
    return interval;
}

void AppDelegate::scheduleTimer()
{
    // Late by a quarter of the interval is early enough for a person, and lets the machine
    // wake once for several programs.
    constexpr double kToleratedShare = 0.25;

    m_timer.reset();
    const double interval = effectiveIntervalSeconds();
    m_timer = m_platform.timers.start(interval, interval * kToleratedShare, whileAlive(&AppDelegate::update));
}

void AppDelegate::update()
{
    const std::optional<PowerSample> sample = smoothed(m_platform.power.read());
    const bool news = sample != m_live.sample() || !m_isDrawn;
    m_live.setSample(sample);
    // A machine at rest reads the same again and again; its picture need not even be composed.
    if (news)
        redraw();
    // Desktops that draw the menu themselves measure it before they ask for fresh readings, so a
    // line that comes or goes is theirs to know at once, also while the menu is closed.
    if (m_isMenuOpen || MenuShape::of(m_live.sample()) != m_menuShape)
        updateMenu();
}

AppDelegate::MenuShape AppDelegate::MenuShape::of(const std::optional<PowerSample>& sample)
{
    if (!sample)
        return {.made = true};
    return {.made = true,
        .hasSample = true,
        .unplugged = sample->isUnplugged(),
        .hasRating = sample->adapterRating.has_value()};
}

std::optional<PowerSample> AppDelegate::smoothed(std::optional<PowerSample> reading) const
{
    const std::optional<PowerSample>& previous = m_live.sample();
    if (!reading || !previous || !m_defaults.boolean(Pref::smoothing))
        return reading;

    const auto average = [](double& watts, bool known, double previousWatts, bool previousKnown) {
        if (known && previousKnown)
            watts = watts * 0.5 + previousWatts * 0.5;
    };
    average(reading->systemLoad, reading->systemLoadKnown, previous->systemLoad, previous->systemLoadKnown);
    average(reading->adapterIn, reading->adapterInKnown, previous->adapterIn, previous->adapterInKnown);
    average(reading->battery, reading->batteryKnown, previous->battery, previous->batteryKnown);
    return reading;
}

void AppDelegate::settingsChanged()
{
    if (!m_timer || m_timer->intervalSeconds() != effectiveIntervalSeconds())
        scheduleTimer();
    redraw();
}

void AppDelegate::localeChanged()
{
    StatusRenderer::useLocale(numberLocaleOfUser());
    tellWidgets(QEvent::LocaleChange);
    m_live.setSample(m_live.sample()); // whoever follows the readings writes them again
    redraw();
    updateMenu();
}

void AppDelegate::appearanceChanged()
{
    tellWidgets(QEvent::PaletteChange);
}

void AppDelegate::togglePanel(const StatusClick& click)
{
    if (click.button == ClickButton::Right || m_defaults.text(Pref::clickShows) == "menu")
        showMenu(click);
    else
        showPanel(click);
}

void AppDelegate::showPanel(const StatusClick& click)
{
    if (m_platform.popover.isShown()) {
        m_platform.popover.close();
        return;
    }
    if (!m_platform.popover.takesClick())
        return;
    update();
    const PanelServices services{
        .desktop = m_platform.desktop, .frames = m_platform.frames, .display = m_platform.display};
    auto panel = std::make_unique<FlowPanel>(m_live, services, [self = std::weak_ptr(m_self)] {
        if (const auto alive = self.lock()) {
            (*alive)->m_platform.popover.close();
            (*alive)->openSettings();
        }
    });
    m_platform.desktop.activate();
    m_platform.popover.show(std::move(panel), click.anchor);
    scheduleTimer();
}

void AppDelegate::showMenu(const StatusClick& click)
{
    m_platform.popover.close();
    update();
    updateMenu();
    m_isMenuFresh = true;
    m_platform.statusItem.openMenu(click.anchor);
    m_isMenuFresh = false;
}

void AppDelegate::menuWillOpen()
{
    // Most desktops open the menu by themselves and only tell that they are about to.
    if (!std::exchange(m_isMenuFresh, false)) {
        m_platform.popover.close();
        update();
        updateMenu();
    }
    m_isMenuOpen = true;
}

void AppDelegate::menuDidClose()
{
    m_isMenuOpen = false;
}

void AppDelegate::popoverDidClose()
{
    scheduleTimer();
}

void AppDelegate::redraw()
{
    const std::optional<PowerSample>& sample = m_live.sample();
    m_isDrawn = true;
    m_statusTexts.follow(sample);
    m_platform.statusItem.show(
        StatusRenderer::image(sample, m_defaults), m_statusTexts.toolTip(), m_statusTexts.spokenLabel());
}

void AppDelegate::updateMenu()
{
    const std::optional<PowerSample>& sample = m_live.sample();
    m_menuShape = MenuShape::of(sample);
    if (!sample) {
        m_menu.setTitle(m_loadItem, "No power data available");
        m_menu.setVisible(m_adapterItem, false);
        m_menu.setVisible(m_batteryItem, false);
        m_menu.setVisible(m_chargerItem, false);
        return;
    }
    m_menu.setTitle(m_loadItem, "Mac using: " + StatusRenderer::systemLoadText(*sample, 1, true));
    m_menu.setTitle(m_adapterItem,
        sample->isUnplugged() ? "On battery"
                              : "From charger: " + StatusRenderer::adapterInText(*sample, 1, true));
    m_menu.setVisible(m_adapterItem, true);
    m_menu.setTitle(m_batteryItem, StatusRenderer::batteryDescription(*sample));
    m_menu.setVisible(m_batteryItem, true);
    m_menu.setTitle(m_chargerItem,
        sample->adapterRating ? "Charger: " + std::to_string(*sample->adapterRating) + " W" : std::string());
    m_menu.setVisible(m_chargerItem, sample->adapterRating.has_value());
}

void AppDelegate::openSettings()
{
    if (!m_settingsWindow)
        m_settingsWindow = std::make_unique<SettingsWindow>(m_live, m_platform.loginItem, m_platform.desktop);
    m_platform.desktop.activate();
    m_settingsWindow->show();
    m_settingsWindow->raise();
    m_settingsWindow->activateWindow();
}

void AppDelegate::openCoffee()
{
    m_platform.desktop.openAddress(Pref::coffeeURL());
}

} // namespace amperly
