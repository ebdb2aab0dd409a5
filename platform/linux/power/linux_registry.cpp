#include "platform/linux/power/linux_registry.h"

#include "platform/battery_entry.h"
#include "platform/linux/power/external_power.h"
#include "platform/linux/power/posix_files.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace amperly {

namespace {

double steadySeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

std::function<double()> orSteadySeconds(std::function<double()> monotonicSeconds)
{
    return monotonicSeconds ? std::move(monotonicSeconds) : steadySeconds;
}

std::int64_t thousandths(double value)
{
    return std::llround(value * 1000.0);
}

void addFlow(RegistryDictionary& telemetry, std::optional<double> watts, std::string_view name,
    std::string_view unknownName)
{
    if (watts)
        telemetry.add(name, thousandths(*watts));
    else
        telemetry.add(unknownName, true);
}

RegistryDictionary telemetryOf(const PowerBalance& balance, bool isExternalKnown)
{
    RegistryDictionary telemetry;
    addFlow(telemetry, balance.battery, battery_entry::kBatteryPower, battery_entry::kBatteryPowerUnknown);
    addFlow(
        telemetry, balance.adapterIn, battery_entry::kSystemPowerIn, battery_entry::kSystemPowerInUnknown);
    addFlow(telemetry, balance.systemLoad, battery_entry::kSystemLoad, battery_entry::kSystemLoadUnknown);
    if (!isExternalKnown)
        telemetry.add(battery_entry::kExternalUnknown, true);
    return telemetry;
}

bool counts(const SupplyReading& supply)
{
    return supply.attributes.counts();
}

} // namespace

LinuxRegistry::LinuxRegistry(const std::string& root, std::function<double()> monotonicSeconds)
    : LinuxRegistry(std::make_unique<PosixFiles>(), root, std::move(monotonicSeconds))
{
}

LinuxRegistry::LinuxRegistry(
    std::unique_ptr<SystemFiles> owned, const std::string& root, std::function<double()> monotonicSeconds)
    : m_ownedFiles(std::move(owned))
    , m_files(*m_ownedFiles)
    , m_supplies(m_files, root)
    , m_measured(m_files, root, orSteadySeconds(std::move(monotonicSeconds)))
{
}

LinuxRegistry::LinuxRegistry(
    SystemFiles& files, const std::string& root, std::function<double()> monotonicSeconds)
    : m_files(files)
    , m_supplies(files, root)
    , m_measured(files, root, orSteadySeconds(std::move(monotonicSeconds)))
{
}

RegistryEntry LinuxRegistry::find(std::string_view className)
{
    if (className != battery_entry::kClassName)
        return 0;

    const bool devicesChanged = m_files.devicesChanged();
    const std::span<const SupplyReading> supplies = m_supplies.read(devicesChanged);
    const MeasuredPower measured = m_measured.read(devicesChanged);
    if (std::none_of(supplies.begin(), supplies.end(), counts) && !m_measured.hasAny()) {
        m_entry = 0;
        return 0;
    }

    m_snapshot.batteries = batteryFigures(supplies);
    m_snapshot.externalConnected = externalConnected(supplies, m_snapshot.batteries);
    m_snapshot.adapterRating = adapterRating(supplies);
    m_snapshot.balance = powerBalance(m_snapshot.externalConnected, m_snapshot.batteries, measured);

    if (++m_lastEntry == 0)
        ++m_lastEntry;
    m_entry = m_lastEntry;
    return m_entry;
}

RegistryProperty LinuxRegistry::copyProperty(RegistryEntry entry, std::string_view name)
{
    if (entry == 0 || entry != m_entry)
        return {};

    const BatteryFigures& batteries = m_snapshot.batteries;
    if (name == battery_entry::kPowerTelemetryData)
        return telemetryOf(m_snapshot.balance, m_snapshot.externalConnected.has_value());
    if (name == battery_entry::kExternalConnected && m_snapshot.externalConnected)
        return *m_snapshot.externalConnected;
    if (name == battery_entry::kCurrentCapacity && batteries.percent)
        return std::int64_t{*batteries.percent};
    if (name == battery_entry::kVoltage && batteries.volts)
        return thousandths(*batteries.volts);
    if (name == battery_entry::kInstantAmperage && batteries.amperes && m_snapshot.balance.battery)
        return thousandths(*batteries.amperes);
    if (name == battery_entry::kAdapterDetails && m_snapshot.adapterRating) {
        RegistryDictionary adapter;
        adapter.add(battery_entry::kWatts, std::int64_t{*m_snapshot.adapterRating});
        return adapter;
    }
    return {};
}

void LinuxRegistry::release(RegistryEntry entry)
{
    if (entry == m_entry)
        m_entry = 0;
}

} // namespace amperly
