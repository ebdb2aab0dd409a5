#include "platform/simulated/laptop/simulated_registry.h"

#include "platform/battery_entry.h"
#include "platform/simulated/laptop/simulated_laptop.h"

#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

namespace amperly {

namespace {

std::int64_t milli(double value)
{
    return std::llround(value * 1000.0);
}

/// Adds a property, or an entry of one, as far as its fault lets it.
template <typename Values, typename Value>
void add(Values& values, std::string_view name, Value value, const Faults& faults)
{
    switch (faults.of(name)) {
    case Fault::None:
        values.emplace(name, std::move(value));
        break;
    case Fault::Refused:
    case Fault::ValueRefused:
        break;
    case Fault::WrongType: // a number where a boolean is due, a boolean for anything else
        if constexpr (std::is_same_v<Value, bool>)
            values.emplace(name, std::int64_t{1});
        else
            values.emplace(name, true);
        break;
    case Fault::Infinite:
        values.emplace(name, std::numeric_limits<double>::infinity());
        break;
    }
}

} // namespace

RegistryEntry SimulatedRegistry::find(std::string_view className)
{
    ++m_finds;
    if (className != battery_entry::kClassName || m_laptop.faults().refuse(className))
        return 0;
    m_found.emplace(++m_lastEntry, propertiesNow());
    return m_lastEntry;
}

void SimulatedRegistry::release(RegistryEntry entry)
{
    ++m_releases;
    if (m_found.erase(entry) == 0)
        ++m_misuses;
}

RegistryProperty SimulatedRegistry::copyProperty(RegistryEntry entry, std::string_view name)
{
    ++m_copies;
    const auto found = m_found.find(entry);
    if (found == m_found.end()) {
        ++m_misuses;
        return {};
    }
    const auto property = found->second.find(name);
    return property == found->second.end() ? RegistryProperty() : property->second;
}

SimulatedRegistry::Properties SimulatedRegistry::propertiesNow() const
{
    const PowerFlows flows = m_laptop.flows();
    const Faults& faults = m_laptop.faults();

    RegistryDictionary adapter;
    if (const std::optional<AdapterWatts> charger = m_laptop.adapter())
        add(adapter, battery_entry::kWatts, std::int64_t{charger->rating}, faults);

    RegistryDictionary telemetry;
    if (m_laptop.hasBattery())
        add(telemetry, battery_entry::kBatteryPower, milli(flows.battery), faults);
    add(telemetry, battery_entry::kSystemPowerIn, milli(flows.adapterIn), faults);
    add(telemetry, battery_entry::kSystemLoad, milli(flows.systemLoad), faults);

    Properties properties;
    add(properties, battery_entry::kExternalConnected, m_laptop.isPluggedIn(), faults);
    add(properties, battery_entry::kAdapterDetails, std::move(adapter), faults);
    add(properties, battery_entry::kPowerTelemetryData, std::move(telemetry), faults);
    if (m_laptop.hasBattery()) {
        const double volts = m_laptop.batteryVolts();
        add(properties, battery_entry::kCurrentCapacity,
            static_cast<std::int64_t>(std::lround(m_laptop.percent())), faults);
        add(properties, battery_entry::kVoltage, milli(volts), faults);
        add(properties, battery_entry::kInstantAmperage, milli(flows.battery / volts), faults);
    }
    return properties;
}

} // namespace amperly
