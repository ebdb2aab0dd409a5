// The application object. It owns what lives for the whole run: the live model, the menu, the
// sampling timer and, once it has been opened, the settings window. It samples, publishes, and
// routes clicks on the status item to the panel or the menu.
#pragma once

#include "app/status_texts.h"
#include "platform/menu.h"
#include "platform/platform.h"
#include "telemetry/live_model.h"

#include <functional>
#include <memory>
#include <optional>

class QWidget;

namespace amperly {

class AppDelegate {
public:
    /// The parts of `platform` must outlive the object.
    explicit AppDelegate(const Platform& platform);
    ~AppDelegate();
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;

    /// Start-up: defaults, login item, menu, status item, timer, first reading.
    void applicationDidFinishLaunching();

    /// The program was started again while it runs: shows the settings window.
    void applicationShouldHandleReopen();

    /// Starts a new timer at the effective interval in place of the running one.
    void scheduleTimer();

    /// One tick: reads, smooths, publishes, redraws.
    void update();

    /// A preference changed, whoever changed it.
    void settingsChanged();

    /// The user's region, or how numbers are written in it, has become another: writes all of
    /// them anew.
    void localeChanged();

    /// What the user wishes of displays, more contrast or less motion, has become another: every
    /// widget looks at it again, as it does when the palette changes.
    void appearanceChanged();

    /// Routes a click on the status item.
    void togglePanel(const StatusClick& click);

    /// Refreshes the status item's image, tooltip and spoken label from the latest reading.
    void redraw();

    /// Refreshes the menu's reading lines from the latest reading.
    void updateMenu();

    /// Shows the settings window, which is made on first use and kept.
    void openSettings();

    /// Opens the donation page in the browser.
    void openCoffee();

    [[nodiscard]] LiveModel& live() { return m_live; }
    [[nodiscard]] const Menu& menu() const { return m_menu; }

    /// The running timer, or null before start-up.
    [[nodiscard]] const RepeatingTimer* timer() const { return m_timer.get(); }

    /// The settings window, or null before it has been opened.
    [[nodiscard]] QWidget* settingsWindow() const { return m_settingsWindow.get(); }

private:
    void registerLoginItemOnce();
    void buildMenu();
    void menuWillOpen();
    void menuDidClose();
    void popoverDidClose();
    void showPanel(const StatusClick& click);
    void showMenu(const StatusClick& click);
    [[nodiscard]] double effectiveIntervalSeconds() const;

    /// The wattages of `reading` averaged half and half with those published last, as far as
    /// both are known; unchanged where smoothing is off or there is nothing to average with.
    [[nodiscard]] std::optional<PowerSample> smoothed(std::optional<PowerSample> reading) const;

    /// Wraps a call to a member so that it does nothing once this object is gone: the toolkit
    /// may deliver what was on its way.
    [[nodiscard]] std::function<void()> whileAlive(void (AppDelegate::*operation)());

    /// Which lines the menu has, apart from the figures in them.
    struct MenuShape {
        bool made = false;
        bool hasSample = false;
        bool unplugged = false;
        bool hasRating = false;
        [[nodiscard]] static MenuShape of(const std::optional<PowerSample>& sample);
        friend bool operator==(const MenuShape&, const MenuShape&) = default;
    };

    Platform m_platform;
    PreferenceStore& m_defaults;
    Menu m_menu;
    int m_loadItem = 0;
    int m_adapterItem = 0;
    int m_batteryItem = 0;
    int m_chargerItem = 0;
    bool m_isDrawn = false;
    MenuShape m_menuShape;
    bool m_isMenuOpen = false;
    bool m_isMenuFresh = false; ///< the readings were taken for the menu that opens now
    LiveModel m_live;
    StatusTexts m_statusTexts;
    std::unique_ptr<QWidget> m_settingsWindow;
    std::unique_ptr<RepeatingTimer> m_timer;
    Subscription m_settingsSubscription;
    std::shared_ptr<AppDelegate*> m_self;
};

} // namespace amperly
