#include "platform/simulated/desktop/simulated_platform.h"

namespace amperly {

Platform SimulatedPlatform::platform()
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

} // namespace amperly
