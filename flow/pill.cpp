#include "flow/pill.h"

#include "flow/flow_animator.h"
#include "render/status_renderer.h"

namespace amperly {

Pill pill(const PowerSample& sample)
{
    constexpr double kIdle = StatusRenderer::idleWatts;
    const bool adapterIdle = sample.adapterInKnown && sample.adapterIn < kChargerActiveWatts;

    if (!sample.externalKnown)
        return {"Power source unknown", "powerplug", FlowColor::charger};
    if (!sample.externalConnected)
        return {"On battery", "battery.50percent", FlowColor::draining};
    // Whether a battery charges that cannot be measured, nobody knows.
    if (!sample.batteryKnown)
        return {"Plugged in", "powerplug.fill", FlowColor::charger};
    if (adapterIdle && sample.battery < -kIdle)
        return {"Plugged in · running on battery", "powerplug", FlowColor::draining};
    if (sample.battery > kIdle)
        return {"Charging", "bolt.fill", FlowColor::charging};
    if (sample.battery < -kIdle)
        return {"Using battery too", "exclamationmark.triangle.fill", FlowColor::draining};
    return {"Plugged in · not charging", "powerplug.fill", FlowColor::charger};
}

} // namespace amperly
