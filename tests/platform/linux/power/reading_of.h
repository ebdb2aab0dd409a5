// One reading of the machine that a registry presents, as the program takes it.
#pragma once

#include "platform/linux/power/linux_registry.h"
#include "platform/linux/power/no_smc_service.h"
#include "telemetry/power_reader.h"
#include "tests/support/print_sample.h"

#include <optional>

namespace amperly {

inline std::optional<PowerSample> readingOf(LinuxRegistry& registry)
{
    NoSmcService noController;
    const PowerReader::Sources sources(noController, registry);
    return PowerReader::read();
}

inline std::optional<double> known(double watts, bool isKnown)
{
    return isKnown ? std::optional(watts) : std::nullopt;
}
inline std::optional<double> load(const std::optional<PowerSample>& sample)
{
    return known(sample.value().systemLoad, sample->systemLoadKnown);
}
inline std::optional<double> adapterIn(const std::optional<PowerSample>& sample)
{
    return known(sample.value().adapterIn, sample->adapterInKnown);
}
inline std::optional<double> batteryFlow(const std::optional<PowerSample>& sample)
{
    return known(sample.value().battery, sample->batteryKnown);
}

} // namespace amperly
