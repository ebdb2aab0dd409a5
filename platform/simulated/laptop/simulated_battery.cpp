#include "platform/simulated/laptop/simulated_battery.h"

#include <algorithm>

namespace amperly {

namespace {

constexpr double kSecondsPerHour = 3600.0;
constexpr double kEmptyVolts = 10.8;
constexpr double kFullVolts = 13.05;

/// Watts that change the charge while `watts` are measured at the terminals.
double storedWatts(double watts)
{
    return watts > 0 ? watts * SimulatedBattery::kChargeEfficiency : watts;
}

} // namespace

void SimulatedBattery::setPercent(double percent)
{
    m_wattHours = std::clamp(percent, 0.0, 100.0) / 100.0 * kCapacityWattHours;
    m_isToppedUp = false;
    updateToppedUp();
}

double SimulatedBattery::percent() const
{
    return m_wattHours / kCapacityWattHours * 100.0;
}

double SimulatedBattery::volts() const
{
    return kEmptyVolts + (kFullVolts - kEmptyVolts) * m_wattHours / kCapacityWattHours;
}

double SimulatedBattery::acceptedWatts() const
{
    if (m_isToppedUp)
        return 0;
    const double tapered = std::max(percent() - kTaperPercent, 0.0) / (100.0 - kTaperPercent);
    return kMostChargingWatts + (kLeastChargingWatts - kMostChargingWatts) * tapered;
}

double SimulatedBattery::deliverableWatts() const
{
    return isEmpty() ? 0 : kMostDeliveredWatts;
}

void SimulatedBattery::flow(double watts, double seconds)
{
    const double changed = m_wattHours + storedWatts(watts) * seconds / kSecondsPerHour;
    m_wattHours = std::clamp(changed, 0.0, kCapacityWattHours);
    updateToppedUp();
}

void SimulatedBattery::updateToppedUp()
{
    if (isFull())
        m_isToppedUp = true;
    else if (percent() <= kTopUpPercent)
        m_isToppedUp = false;
}

} // namespace amperly
