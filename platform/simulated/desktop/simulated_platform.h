// A whole platform for running the program in a test: readings and time are the test's, and the
// desktop keeps account of everything.
#pragma once

#include "platform/platform.h"
#include "platform/simulated/desktop/fake_login_item.h"
#include "platform/simulated/desktop/fixed_display_settings.h"
#include "platform/simulated/desktop/manual_frame_clock.h"
#include "platform/simulated/desktop/recording_desktop.h"
#include "platform/simulated/desktop/recording_popover_host.h"
#include "platform/simulated/desktop/recording_status_item.h"
#include "platform/simulated/laptop/manual_timer_source.h"
#include "platform/simulated/laptop/scripted_power_source.h"

namespace amperly {

class SimulatedPlatform {
public:
    /// `preferences` must outlive this object.
    explicit SimulatedPlatform(PreferenceStore& preferences) : m_preferences(preferences) { }
    SimulatedPlatform(const SimulatedPlatform&) = delete;
    SimulatedPlatform& operator=(const SimulatedPlatform&) = delete;

    /// The parts below as the program borrows them.
    [[nodiscard]] Platform platform()
    {
        return {
            .power = power,
            .preferences = m_preferences,
            .timers = timers,
            .statusItem = statusItem,
            .popover = popover,
            .loginItem = loginItem,
            .desktop = desktop,
            .frames = frames,
            .display = display,
        };
    }

    /// Moves the clock.
    void advance(double seconds) { timers.advance(seconds); }

    ScriptedPowerSource power;
    ManualTimerSource timers;
    RecordingStatusItem statusItem;
    RecordingPopoverHost popover;
    FakeLoginItem loginItem;
    RecordingDesktop desktop;
    ManualFrameClock frames;
    FixedDisplaySettings display;

private:
    PreferenceStore& m_preferences;
};

} // namespace amperly
