#include "platform/simulated/laptop/simulated_registry.h"

#include "platform/battery_entry.h"
#include "platform/simulated/laptop/simulated_laptop.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace amperly {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::int64_t milli(double value)
{
    return std::llround(value * 1000.0);
}

/// A boolean where something else is due, a number where a boolean is.
RegistryProperty ofAnotherType(const RegistryProperty& value)
{
    if (std::holds_alternative<bool>(value))
        return std::int64_t{1};
    return true;
}

} // namespace

RegistryEntry SimulatedRegistry::find(std::string_view className)
{
    ++m_finds;
    if (className != battery_entry::kClassName || m_laptop.faults().refuse(className))
        return 0;
    m_found.push_back({.entry = ++m_lastEntry,
        .pluggedIn = m_laptop.isPluggedIn(),
        .rating = m_laptop.adapter().value_or(AdapterWatts{}).rating,
        .hasBattery = m_laptop.hasBattery(),
        .percent = static_cast<int>(std::lround(m_laptop.percent())),
        .volts = m_laptop.batteryVolts(),
        .flows = m_laptop.flows()});
    return m_lastEntry;
}

void SimulatedRegistry::release(RegistryEntry entry)
{
    ++m_releases;
    if (std::erase_if(m_found, [entry](const Found& found) { return found.entry == entry; }) == 0)
        ++m_misuses;
}

RegistryProperty SimulatedRegistry::copyProperty(RegistryEntry entry, std::string_view name)
{
    ++m_copies;
    const auto found = std::find_if(
        m_found.begin(), m_found.end(), [entry](const Found& candidate) { return candidate.entry == entry; });
    if (found == m_found.end()) {
        ++m_misuses;
        return {};
    }
    RegistryProperty value = trueValue(*found, name);
    if (std::holds_alternative<std::monostate>(value))
        return value;
    switch (m_laptop.faults().of(name)) {
    case Fault::None:
        return value;
    case Fault::Refused:
    case Fault::ValueRefused:
        return {};
    case Fault::WrongType:
        return ofAnotherType(value);
    case Fault::Infinite:
        return kInfinity;
    }
    return value;
}

RegistryProperty SimulatedRegistry::trueValue(const Found& found, std::string_view name) const
{
    if (name == battery_entry::kExternalConnected)
        return found.pluggedIn;
    if (name == battery_entry::kAdapterDetails)
        return adapterDetails(found);
    if (name == battery_entry::kPowerTelemetryData)
        return telemetry(found);
    if (!found.hasBattery)
        return {};
    if (name == battery_entry::kCurrentCapacity)
        return std::int64_t{found.percent};
    if (name == battery_entry::kVoltage)
        return milli(found.volts);
    if (name == battery_entry::kInstantAmperage)
        return milli(found.flows.battery / found.volts);
    return {};
}

RegistryDictionary SimulatedRegistry::adapterDetails(const Found& found) const
{
    RegistryDictionary details;
    if (found.pluggedIn)
        addEntry(details, battery_entry::kWatts, found.rating);
    return details;
}

RegistryDictionary SimulatedRegistry::telemetry(const Found& found) const
{
    RegistryDictionary data;
    if (found.hasBattery)
        addEntry(data, battery_entry::kBatteryPower, milli(found.flows.battery));
    addEntry(data, battery_entry::kSystemPowerIn, milli(found.flows.adapterIn));
    addEntry(data, battery_entry::kSystemLoad, milli(found.flows.systemLoad));
    return data;
}

void SimulatedRegistry::addEntry(
    RegistryDictionary& dictionary, std::string_view name, std::int64_t value) const
{
    switch (m_laptop.faults().of(name)) {
    case Fault::None:
        return dictionary.add(name, value);
    case Fault::Refused:
    case Fault::ValueRefused:
        return;
    case Fault::WrongType:
        return dictionary.add(name, true);
    case Fault::Infinite:
        return dictionary.add(name, kInfinity);
    }
}

} // namespace amperly
