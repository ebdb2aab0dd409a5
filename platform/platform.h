// Everything that the program meets of machine and desktop, gathered for handing over. A back
// end owns the parts, and has them all: what a machine lacks is a part that says so. The program
// only borrows them.
#pragma once

#include "platform/desktop.h"
#include "platform/display_settings.h"
#include "platform/frame_clock.h"
#include "platform/login_item.h"
#include "platform/popover_host.h"
#include "platform/power_source.h"
#include "platform/preference_store.h"
#include "platform/repeating_timer.h"
#include "platform/status_item.h"

namespace amperly {

struct Platform {
    PowerSource& power;
    PreferenceStore& preferences;
    TimerSource& timers;
    StatusItem& statusItem;
    PopoverHost& popover;
    LoginItem& loginItem;
    Desktop& desktop;
    FrameClock& frames;
    const DisplaySettings& display;
};

} // namespace amperly
