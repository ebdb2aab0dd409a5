#include "telemetry/power_reader.h"

#include "platform/battery_entry.h"
#include "platform/registry.h"
#include "telemetry/smc.h"

#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>

namespace amperly {

namespace {

/// Not-a-number becomes 0 too.
double notNegative(double value)
{
    return value >= 0 ? value : 0;
}

template <typename Variant>
std::optional<double> asDouble(const Variant& value)
{
    if (const double* real = std::get_if<double>(&value))
        return *real;
    if (const std::int64_t* integer = std::get_if<std::int64_t>(&value))
        return static_cast<double>(*integer);
    return std::nullopt;
}

/// A number read as a whole one: a fraction is dropped, what does not fit saturates.
template <typename Integer, typename Variant>
std::optional<Integer> asInteger(const Variant& value)
{
    using Limits = std::numeric_limits<Integer>;
    if (const std::int64_t* integer = std::get_if<std::int64_t>(&value)) {
        if (std::cmp_less(*integer, Limits::min()))
            return Limits::min();
        if (std::cmp_greater(*integer, Limits::max()))
            return Limits::max();
        return static_cast<Integer>(*integer);
    }
    if (const double* real = std::get_if<double>(&value)) {
        if (!(*real > static_cast<double>(Limits::min())))
            return *real == *real ? Limits::min() : Integer{0};
        if (*real >= static_cast<double>(Limits::max()))
            return Limits::max();
        return static_cast<Integer>(*real);
    }
    return std::nullopt;
}

/// An entry found in the registry, given back at the end of the reading.
class BatteryService {
public:
    explicit BatteryService(Registry& registry)
        : m_registry(registry), m_entry(registry.find(battery_entry::kClassName))
    {
    }
    ~BatteryService()
    {
        if (isPresent())
            m_registry.release(m_entry);
    }
    BatteryService(const BatteryService&) = delete;
    BatteryService& operator=(const BatteryService&) = delete;

    [[nodiscard]] bool isPresent() const { return m_entry != 0; }

    [[nodiscard]] RegistryProperty copy(std::string_view name) const
    {
        return m_registry.copyProperty(m_entry, name);
    }

    [[nodiscard]] RegistryDictionary copyDictionary(std::string_view name) const
    {
        RegistryProperty property = copy(name);
        if (RegistryDictionary* dictionary = std::get_if<RegistryDictionary>(&property))
            return std::move(*dictionary);
        return {};
    }

private:
    Registry& m_registry;
    RegistryEntry m_entry;
};

/// What the battery's entry says beside the flows.
PowerSample sampleWithoutFlows(const BatteryService& service)
{
    PowerSample sample;
    if (!service.isPresent())
        return sample;

    const RegistryProperty external = service.copy(battery_entry::kExternalConnected);
    sample.externalConnected = external == RegistryProperty(true);

    const RegistryDictionary adapter = service.copyDictionary(battery_entry::kAdapterDetails);
    if (sample.externalConnected)
        sample.adapterRating = asInteger<int>(entryIn(adapter, battery_entry::kWatts));

    sample.batteryPercent = asInteger<int>(service.copy(battery_entry::kCurrentCapacity));
    return sample;
}

PowerSample withFlowsOfController(PowerSample sample, double system, SMC& smc)
{
    // The controller counts battery power as positive while the battery delivers it.
    const std::optional<double> delivered = smc.floatValue("SBAP");
    if (sample.externalConnected) {
        if (const std::optional<double> adapter = smc.floatValue("PDTR")) {
            sample.adapterIn = notNegative(*adapter);
            sample.battery = delivered ? -*delivered : *adapter - system;
        } else {
            sample.battery = delivered ? -*delivered : 0;
            sample.adapterIn = notNegative(system + sample.battery);
        }
    } else {
        sample.battery = delivered ? -*delivered : -system;
    }
    sample.systemLoad = notNegative(system);
    return sample;
}

PowerSample withFlowsOfRegistry(PowerSample sample, const BatteryService& service)
{
    const RegistryDictionary telemetry = service.copyDictionary(battery_entry::kPowerTelemetryData);
    const double millivolts = asDouble(service.copy(battery_entry::kVoltage)).value_or(0);
    const double milliamperes = static_cast<double>(
        asInteger<std::int64_t>(service.copy(battery_entry::kInstantAmperage)).value_or(0));

    const auto mW = [&telemetry](std::string_view key) -> std::optional<double> {
        const std::optional<std::int64_t> milliwatts = asInteger<std::int64_t>(entryIn(telemetry, key));
        if (!milliwatts)
            return std::nullopt;
        return static_cast<double>(*milliwatts) / 1000.0;
    };

    sample.battery = mW(battery_entry::kBatteryPower).value_or(millivolts * milliamperes / 1'000'000);
    const double adapter = mW(battery_entry::kSystemPowerIn).value_or(0);
    sample.adapterIn = notNegative(adapter);
    sample.systemLoad = notNegative(mW(battery_entry::kSystemLoad).value_or(adapter - sample.battery));
    return sample;
}

} // namespace

PowerReader::PowerReader(SmcService& smcService, Registry& registry)
    : m_smcService(smcService), m_registry(registry)
{
}

PowerReader::~PowerReader() = default;

SMC* PowerReader::smc()
{
    std::call_once(m_smcTried, [this] { m_smc = SMC::open(m_smcService); });
    return m_smc.get();
}

std::optional<PowerSample> PowerReader::read()
{
    const BatteryService service(m_registry);
    const PowerSample sample = sampleWithoutFlows(service);
    if (SMC* const controller = smc()) {
        if (const std::optional<double> system = controller->floatValue("PSTR"))
            return withFlowsOfController(sample, *system, *controller);
    }
    if (service.isPresent())
        return withFlowsOfRegistry(sample, service);
    return std::nullopt;
}

} // namespace amperly
