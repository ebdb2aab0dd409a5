// A whole platform for running the program in a test: the simulated laptop, timers on its clock,
// and a desktop that keeps account of everything.
#pragma once

#include "platform/platform.h"
#include "platform/simulated/desktop/fake_login_item.h"
#include "platform/simulated/desktop/fixed_display_settings.h"
#include "platform/simulated/desktop/fixed_ui_font.h"
#include "platform/simulated/desktop/manual_frame_clock.h"
#include "platform/simulated/desktop/recording_desktop.h"
#include "platform/simulated/desktop/recording_popover_host.h"
#include "platform/simulated/desktop/recording_status_item.h"
#include "platform/simulated/laptop/manual_timer_source.h"
#include "platform/simulated/laptop/simulated_laptop.h"

namespace amperly {

class SimulatedPlatform {
public:
    /// `preferences` must outlive this object.
    explicit SimulatedPlatform(PreferenceStore& preferences, FixedUiFont uiFont = {});
    SimulatedPlatform(const SimulatedPlatform&) = delete;
    SimulatedPlatform& operator=(const SimulatedPlatform&) = delete;

    /// The parts below as the program borrows them.
    [[nodiscard]] Platform platform();

    /// Moves the one clock of laptop and timers. At a tick the laptop is where it is at that instant.
    void advance(double seconds) { timers.advance(seconds); }

    SimulatedLaptop laptop;
    ManualTimerSource timers; ///< moving it moves the laptop
    RecordingStatusItem statusItem;
    RecordingPopoverHost popover;
    FakeLoginItem loginItem;
    RecordingDesktop desktop;
    ManualFrameClock frames;
    FixedDisplaySettings display;
    FixedUiFont uiFont;

private:
    PreferenceStore& m_preferences;
};

} // namespace amperly
