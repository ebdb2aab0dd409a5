#include "app/linux_program.h"

#include "app/app_delegate.h"
#include "platform/linux/accessibility/accessibility_on_demand.h"
#include "platform/linux/clock/display_frames.h"
#include "platform/linux/clock/timer_source.h"
#include "platform/linux/desktop/launcher.h"
#include "platform/linux/desktop/linux_desktop.h"
#include "platform/linux/desktop/linux_display_settings.h"
#include "platform/linux/desktop/power_saving.h"
#include "platform/linux/desktop/window_palette.h"
#include "platform/linux/files/xdg_session.h"
#include "platform/linux/login/xdg_autostart.h"
#include "platform/linux/memory/memory_trimming.h"
#include "platform/linux/popover/linux_popover_host.h"
#include "platform/linux/popover/menu_presenter.h"
#include "platform/linux/preferences/ini_preference_store.h"
#include "platform/linux/text/linux_ui_font.h"
#include "platform/linux/tray/desktop_ink.h"
#include "platform/linux/tray/linux_status_item.h"
#include "platform/linux/x11/x11_settings.h"
#include "platform/linux/xembed/xembed_item.h"
#include "render/status_art.h"

#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QLocale>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace amperly {

namespace {

bool hasDisplay()
{
    for (const char* const name : {"WAYLAND_DISPLAY", "DISPLAY", "QT_QPA_PLATFORM"}) {
        if (const char* const value = std::getenv(name); value != nullptr && *value != '\0')
            return true;
    }
    return false;
}

int run(const ProgramIdentity& identity, const ProgramSubject& subject)
{
    SingleInstance instance({identity.busName, identity.objectPath});
    if (instance.claim() == SingleInstance::Claim::HandedOver)
        return EXIT_SUCCESS;

    LinuxDesktop desktop(instance, {.version = AMPERLY_VERSION});
    IniPreferenceStore preferences(configFolder() + '/' + identity.settingsFile,
        [](const std::string& line) { LinuxDesktop::warn(line); });
    XdgAutostart autostart({identity.applicationId, identity.name, Installation::runningProgram().string()},
        {configFolder(), CurrentDesktop::ofSession()},
        {.isThere = isProgram, .launch = [](const std::string& program, const std::string& argument) {
             return argument.empty() ? startDetached({program}) : startDetached({program, argument});
         }});
    LoginItem& loginItem = subject.loginItem ? *subject.loginItem : autostart;

    LinuxUiFont uiFont(QApplication::font().family().toStdString());
    StatusArt art(uiFont);

    TimerSlack slack;
    QtTimerSource timers(slack);
    LinuxPopoverHost popover(slack);
    desktop.onLeaving([&popover] { popover.close(); });
    MenuPresenter menus;
    const std::unique_ptr<BusConnection> portalConnection = BusConnection::open();
    DesktopInk ink(portalConnection.get());
    const PowerSaving powerSaving(portalConnection.get());
    DisplayFrames frames([&powerSaving] { return powerSaving.isOn(); });
    WindowPalette windowPalette([&ink] {
        return DesktopLook{.prefersDark = ink.prefersDark(), .themeName = x11TextSetting("Net/ThemeName")};
    });
    ink.onSchemeChanged([&windowPalette] { windowPalette.refresh(); });
    LinuxDisplaySettings display(portalConnection.get(), configFolder(), CurrentDesktop::ofSession());
    desktop.onActivate([&windowPalette, &display] {
        windowPalette.refresh();
        display.refresh();
    });
    // Not only for windows: without a portal, the ink goes by these colours from the first picture on.
    windowPalette.refresh();
    const std::unique_ptr<XEmbedItem> xembedItem
        = XEmbedItem::create({.ink = [&ink] { return ink.ink(PanelInk::ColorScheme); }});
    LinuxStatusItem statusItem({
        .ink = ink,
        .fallback = xembedItem.get(),
        .openMenu = [&menus](Menu& menu, std::optional<ScreenPoint> anchor) { menus.open(menu, anchor); },
        .warn = LinuxDesktop::warn,
        .desktop = CurrentDesktop::ofSession(),
    });

    const Injected<PreferenceStore> standardPreferences(preferences);
    const Injected<StatusArt> currentArt(art);

    AppDelegate application({
        .power = subject.power,
        .preferences = preferences,
        .timers = timers,
        .statusItem = statusItem,
        .popover = popover,
        .loginItem = loginItem,
        .desktop = desktop,
        .frames = frames,
        .display = display,
    });
    display.onChanged([&application] { application.appearanceChanged(); });
    application.applicationDidFinishLaunching();

    const AccessibilityOnDemand accessibility;
    const MemoryTrimming memoryTrimming;
    // Not QApplication's own exec(), which would start the bridge to assistive technology, with a
    // bus connection and a thread of its own, for a program that has nothing on screen yet.
    return QCoreApplication::exec();
}

} // namespace

int runLinuxProgram(int argc, char** argv, const ProgramIdentity& identity, const ProgramSubject& subject)
{
    if (!hasDisplay()) {
        std::fprintf(stderr, "%s: there is no display to show anything on.\n", identity.name);
        return EXIT_FAILURE;
    }
    keepLargeBlocksApart();
    // The toolkit's own event loop wakes up cheaper than the one that it shares with other
    // toolkits. Whoever needs the shared one says so.
    if (!qEnvironmentVariableIsSet("QT_NO_GLIB"))
        qputenv("QT_NO_GLIB", "1");
    allowLayerWindows();
    const QApplication toolkit(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationName(QString::fromUtf8(identity.name));
    QGuiApplication::setDesktopFileName(QString::fromUtf8(identity.applicationId));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/amperly/amperly.svg")));
    // The toolkit would mirror windows only for a translation, and these texts have none.
    QGuiApplication::setLayoutDirection(QLocale::system().textDirection());
    return run(identity, subject);
}

} // namespace amperly
