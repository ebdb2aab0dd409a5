// A machine that reads exactly what a test says, through the battery's registry entry.
#pragma once

#include "platform/battery_entry.h"
#include "platform/registry.h"
#include "platform/smc_service.h"
#include "telemetry/power_reader.h"
#include "telemetry/power_sample.h"

#include <cmath>
#include <cstdint>
#include <optional>

namespace amperly {

class CannedReadings : public Registry, private SmcService {
public:
    /// What read() gives from now on; nothing for no source at all. Figures in whole milliwatts.
    void give(const std::optional<PowerSample>& sample) { m_sample = sample; }

    [[nodiscard]] int readings() const { return m_readings; }

    [[nodiscard]] RegistryEntry find(std::string_view className) override
    {
        ++m_readings;
        return m_sample && className == battery_entry::kClassName ? 1 : 0;
    }

    [[nodiscard]] RegistryProperty copyProperty(RegistryEntry, std::string_view name) override
    {
        using namespace battery_entry;
        if (name == kExternalConnected)
            return m_sample->externalConnected;
        if (name == kCurrentCapacity && m_sample->batteryPercent)
            return std::int64_t{*m_sample->batteryPercent};
        RegistryDictionary dictionary;
        if (name == kAdapterDetails && m_sample->adapterRating)
            dictionary.add(kWatts, std::int64_t{*m_sample->adapterRating});
        if (name == kPowerTelemetryData) {
            const auto add
                = [&](std::string_view figure, std::string_view unknown, double watts, bool known) {
                      if (known)
                          dictionary.add(figure, static_cast<std::int64_t>(std::llround(watts * 1000)));
                      else
                          dictionary.add(unknown, true);
                  };
            add(kSystemLoad, kSystemLoadUnknown, m_sample->systemLoad, m_sample->systemLoadKnown);
            add(kSystemPowerIn, kSystemPowerInUnknown, m_sample->adapterIn, m_sample->adapterInKnown);
            add(kBatteryPower, kBatteryPowerUnknown, m_sample->battery, m_sample->batteryKnown);
            if (!m_sample->externalKnown)
                dictionary.add(kExternalUnknown, true);
        }
        if (dictionary.empty())
            return {};
        return dictionary;
    }

    void release(RegistryEntry) override { }

private:
    [[nodiscard]] SmcOpening open(std::string_view) override { return {}; }
    [[nodiscard]] std::int32_t callStruct(std::uint32_t, std::uint32_t,
        std::span<const std::byte, kSmcRecordSize>, std::span<std::byte, kSmcRecordSize>) override
    {
        return -1;
    }
    void close(std::uint32_t) override { }

    std::optional<PowerSample> m_sample = PowerSample{};
    int m_readings = 0;
    PowerReader::Sources m_sources{*this, *this};
};

} // namespace amperly
