#include "flow/flow_animator.h"

#include <algorithm>
#include <cmath>

namespace amperly {

namespace {

constexpr double kLongestStep = 0.1; // seconds: a stalled frame must not make the pulses jump
constexpr double kTimeConstant = 0.45; // seconds
constexpr double kBatteryActiveWatts = 0.3;

/// Pulses move the faster the more power they carry.
struct PulseSpeed {
    double idle = 18.0; ///< points per second
    double gain = 22.0; ///< so much more at full power
    double fullWatts = 120.0;
    double wrap = 10000.0; ///< points; keeps the distance small
};
constexpr PulseSpeed kSpeed;

} // namespace

Flows flowTargets(const PowerSample& sample)
{
    Flows flows;
    if (sample.systemLoadKnown && sample.adapterInKnown && sample.externalConnected
        && sample.adapterIn >= kChargerActiveWatts)
        flows.chargerToMac = std::min(sample.systemLoad, sample.adapterIn);
    if (sample.batteryKnown && sample.externalConnected && sample.battery > kBatteryActiveWatts)
        flows.chargerToBattery = sample.battery;
    if (sample.batteryKnown && sample.battery < -kBatteryActiveWatts)
        flows.batteryToMac = -sample.battery;
    return flows;
}

void FlowAnimator::step(const PowerSample& sample, double now)
{
    m_interval = std::clamp(now - m_last.value_or(now), 0.0, kLongestStep);
    m_last = now;
    smooth(flowTargets(sample));
    travel();
}

void FlowAnimator::smooth(const Flows& targets)
{
    const double share = 1.0 - std::exp(-m_interval / kTimeConstant);
    m_flows.chargerToMac += share * (targets.chargerToMac - m_flows.chargerToMac);
    m_flows.chargerToBattery += share * (targets.chargerToBattery - m_flows.chargerToBattery);
    m_flows.batteryToMac += share * (targets.batteryToMac - m_flows.batteryToMac);
}

void FlowAnimator::travel()
{
    const std::array watts{m_flows.chargerToMac, m_flows.chargerToBattery, m_flows.batteryToMac};
    for (std::size_t flow = 0; flow < watts.size(); ++flow) {
        const double load = std::min(watts[flow], kSpeed.fullWatts) / kSpeed.fullWatts;
        const double speed = kSpeed.idle + kSpeed.gain * load;
        m_travelled[flow] = std::fmod(m_travelled[flow] + speed * m_interval, kSpeed.wrap);
    }
}

} // namespace amperly
