#include "platform/linux/power/power_balance.h"

#include <algorithm>

namespace amperly {

namespace {

std::optional<double> notNegative(std::optional<double> watts)
{
    return watts ? std::optional(std::max(*watts, 0.0)) : std::nullopt;
}

/// Nothing comes in, so the batteries carry all of the load.
PowerBalance onBattery(const BatteryFigures& batteries, const MeteredPower& metered)
{
    PowerBalance balance;
    balance.adapterIn = 0.0;
    // Just after the plug was pulled gauges still say that nothing flows, or have no figure yet.
    if (batteries.watts && batteries.hasRate)
        balance.battery = batteries.watts;
    else if (metered.systemLoad)
        balance.battery = -*metered.systemLoad;
    // A battery that fills while nothing is said to come in contradicts its supplies; what the
    // computer draws then follows from neither.
    if (balance.battery && *balance.battery <= 0)
        balance.systemLoad = -*balance.battery;
    else
        balance.systemLoad = notNegative(metered.systemLoad);
    return balance;
}

} // namespace

PowerBalance powerBalance(
    std::optional<bool> externalConnected, const BatteryFigures& batteries, const MeteredPower& metered)
{
    if (externalConnected == false && batteries.count > 0)
        return onBattery(batteries, metered);

    PowerBalance balance;
    balance.battery = batteries.watts;
    balance.systemLoad = metered.systemLoad;
    balance.adapterIn = metered.adapterIn;
    if (!balance.battery && batteries.count > 0 && metered.adapterIn && metered.systemLoad)
        balance.battery = *metered.adapterIn - *metered.systemLoad;

    // Where there is no battery all that comes in is drawn, though there is no battery flow to show.
    const std::optional<double> stored = batteries.count == 0 ? std::optional(0.0) : balance.battery;
    if (stored && metered.systemLoad && !metered.adapterIn)
        balance.adapterIn = *metered.systemLoad + *stored;
    if (stored && metered.adapterIn && !metered.systemLoad)
        balance.systemLoad = *metered.adapterIn - *stored;

    balance.adapterIn = notNegative(balance.adapterIn);
    balance.systemLoad = notNegative(balance.systemLoad);
    return balance;
}

} // namespace amperly
