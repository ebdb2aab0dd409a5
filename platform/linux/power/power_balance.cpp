#include "platform/linux/power/power_balance.h"

#include <algorithm>

namespace amperly {

namespace {

std::optional<double> notNegative(std::optional<double> watts)
{
    return watts ? std::optional(std::max(*watts, 0.0)) : std::nullopt;
}

/// Nothing comes in, so the batteries carry all of the load.
PowerBalance onBattery(const BatteryFigures& batteries, const MeasuredPower& measured)
{
    PowerBalance balance;
    balance.adapterIn = 0.0;
    // Just after the plug was pulled gauges still say that nothing flows, or have no figure yet.
    if (batteries.watts && batteries.hasRate)
        balance.battery = batteries.watts;
    else if (measured.systemLoad)
        balance.battery = -*measured.systemLoad;
    // A battery that fills while nothing is said to come in contradicts its supplies; what the
    // computer draws then follows from neither.
    if (balance.battery && *balance.battery <= 0)
        balance.systemLoad = -*balance.battery;
    else
        balance.systemLoad = notNegative(measured.systemLoad);
    return balance;
}

} // namespace

PowerBalance powerBalance(
    std::optional<bool> externalConnected, const BatteryFigures& batteries, const MeasuredPower& measured)
{
    if (externalConnected == false && batteries.count > 0)
        return onBattery(batteries, measured);

    PowerBalance balance;
    balance.battery = batteries.watts;
    balance.systemLoad = measured.systemLoad;
    balance.adapterIn = measured.adapterIn;
    if (!balance.battery && batteries.count > 0 && measured.adapterIn && measured.systemLoad)
        balance.battery = *measured.adapterIn - *measured.systemLoad;

    // Where there is no battery all that comes in is drawn, though the battery's flow is nobody's.
    const std::optional<double> stored = batteries.count == 0 ? std::optional(0.0) : balance.battery;
    if (stored && measured.systemLoad && !measured.adapterIn)
        balance.adapterIn = *measured.systemLoad + *stored;
    if (stored && measured.adapterIn && !measured.systemLoad)
        balance.systemLoad = *measured.adapterIn - *stored;

    balance.adapterIn = notNegative(balance.adapterIn);
    balance.systemLoad = notNegative(balance.systemLoad);
    return balance;
}

} // namespace amperly
