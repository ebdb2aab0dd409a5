#include "platform/linux/power/linux_power_source.h"

#include "platform/linux/power/external_power.h"
#include "platform/linux/power/power_balance.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace amperly {

namespace {

double steadySeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// What lies below a milliwatt is noise, and would decide how a figure at the half is written.
double inWholeMilliwatts(double watts)
{
    return static_cast<double>(std::llround(watts * 1000.0)) / 1000.0;
}

void setFlow(double& watts, bool& isKnown, std::optional<double> figure)
{
    watts = inWholeMilliwatts(figure.value_or(0.0));
    isKnown = figure.has_value();
}

bool counts(const SupplyReading& supply)
{
    return supply.attributes.counts();
}

} // namespace

LinuxPowerSource::LinuxPowerSource(
    SystemFiles& files, const std::string& root, std::function<double()> monotonicSeconds)
    : m_files(files)
    , m_supplies(files, root)
    , m_meters(files, root, monotonicSeconds ? std::move(monotonicSeconds) : steadySeconds)
{
}

std::optional<PowerSample> LinuxPowerSource::read()
{
    const bool devicesChanged = m_files.devicesChanged();
    const std::span<const SupplyReading> supplies = m_supplies.read(devicesChanged);
    const MeteredPower metered = m_meters.read(devicesChanged);
    if (std::none_of(supplies.begin(), supplies.end(), counts) && !m_meters.hasAny())
        return std::nullopt;

    const BatteryFigures batteries = batteryFigures(supplies);
    const std::optional<bool> external = externalConnected(supplies, batteries);
    const PowerBalance balance = powerBalance(external, batteries, metered);

    PowerSample sample;
    setFlow(sample.systemLoad, sample.systemLoadKnown, balance.systemLoad);
    setFlow(sample.adapterIn, sample.adapterInKnown, balance.adapterIn);
    setFlow(sample.battery, sample.batteryKnown, balance.battery);
    sample.adapterRating = adapterRating(supplies);
    sample.batteryPercent = batteries.percent;
    sample.externalConnected = external.value_or(false);
    sample.externalKnown = external.has_value();
    return sample;
}

} // namespace amperly
