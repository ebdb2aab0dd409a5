// The program on macOS: the parts of the back end put together and handed to the application
// object.
#pragma once

#include "app/app_delegate.h"
#include "platform/macos/accessibility/app_kit_display_settings.h"
#include "platform/macos/frames/display_link_frames.h"
#include "platform/macos/locale/locale_watch.h"
#include "platform/macos/login/main_app_login_item.h"
#include "platform/macos/menubar/menu_bar_item.h"
#include "platform/macos/power/io_kit_registry.h"
#include "platform/macos/power/io_kit_smc_service.h"
#include "platform/macos/preferences/user_defaults_store.h"
#include "platform/macos/shell/accessory_application.h"
#include "platform/macos/shell/app_kit_desktop.h"
#include "platform/macos/shell/native_popover_host.h"
#include "platform/macos/shell/run_loop_timer.h"
#include "render/status_art.h"
#include "telemetry/power_reader.h"

namespace amperly {

class MacProgram {
public:
    /// Everything is in place; nothing has been read or shown. Both must outlive the program.
    /// `viewOf` is for whoever runs this without the toolkit's own windows.
    MacProgram(AccessoryApplication& application, UiFont& font, const ViewOf& viewOf = nativeView);

    /// Shows the first reading and keeps it current from then on.
    void start() { m_delegate.applicationDidFinishLaunching(); }

    [[nodiscard]] AppDelegate& delegate() { return m_delegate; }

private:
    AppKitDesktop m_desktop;
    IoKitSmcService m_smcService;
    IoKitRegistry m_registry;
    PowerReader m_power{m_smcService, m_registry};
    UserDefaultsStore m_preferences;
    MainAppLoginItem m_loginItem;
    RunLoopTimerSource m_timers;
    StatusArt m_art;
    MenuBarItem m_statusItem;
    NativePopoverHost m_popover;
    DisplayLinkFrames m_frames;
    AppKitDisplaySettings m_display;

    const Injected<PreferenceStore> m_standardPreferences{m_preferences};
    const Injected<StatusArt> m_currentArt{m_art};

    AppDelegate m_delegate;
    const LocaleWatch m_locale{[this] { m_delegate.localeChanged(); }};
};

} // namespace amperly
