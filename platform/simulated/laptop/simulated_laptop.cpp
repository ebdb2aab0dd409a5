#include "platform/simulated/laptop/simulated_laptop.h"

#include <algorithm>

namespace amperly {

namespace {

// Flows are taken as constant for this long; the load's ramps take several seconds.
constexpr double kLongestStepSeconds = 1.0;

} // namespace

SimulatedLaptop::SimulatedLaptop(WanderingLoad load) : m_load(load) { }

void SimulatedLaptop::setLoad(double watts)
{
    m_fixedLoad = std::max(watts, 0.0);
}

double SimulatedLaptop::wantedLoad() const
{
    const double wanted = m_fixedLoad.value_or(m_load.wattsAt(m_elapsedSeconds));
    if (!m_adapter && percent() < kThrottlePercent)
        return std::min(wanted, kThrottledWatts);
    return wanted;
}

PowerFlows SimulatedLaptop::flows() const
{
    const double available = m_adapter ? std::max(m_adapter->rating, 0) : 0;
    const double deliverable = m_hasBattery ? m_battery.deliverableWatts() : 0;

    PowerFlows flows;
    flows.systemLoad = std::min(wantedLoad(), available + deliverable);
    if (flows.systemLoad > available)
        flows.battery = available - flows.systemLoad;
    else if (m_hasBattery && !m_chargeHeld)
        flows.battery = std::min(available - flows.systemLoad, m_battery.acceptedWatts());
    flows.adapterIn = flows.systemLoad + flows.battery;
    return flows;
}

void SimulatedLaptop::advance(double seconds)
{
    while (seconds > 0) {
        const double step = std::min(seconds, kLongestStepSeconds);
        m_battery.flow(flows().battery, step);
        m_elapsedSeconds += step;
        seconds -= step;
    }
}

} // namespace amperly
