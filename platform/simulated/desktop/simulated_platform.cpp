#include "platform/simulated/desktop/simulated_platform.h"

#include <utility>

namespace amperly {

SimulatedPlatform::SimulatedPlatform(PreferenceStore& preferences, FixedUiFont font)
    : uiFont(std::move(font)), m_preferences(preferences)
{
    timers.onTimePasses([this](double seconds) { laptop.advance(seconds); });
}

Platform SimulatedPlatform::platform()
{
    return {
        .smcService = laptop.smc(),
        .registry = laptop.registry(),
        .preferences = m_preferences,
        .timers = timers,
        .statusItem = statusItem,
        .popover = popover,
        .loginItem = loginItem,
        .desktop = desktop,
        .frames = frames,
        .display = display,
        .uiFont = uiFont,
    };
}

} // namespace amperly
