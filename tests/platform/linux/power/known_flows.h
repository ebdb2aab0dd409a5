// The flows of a reading, each as far as it is known.
#pragma once

#include "platform/power_sample.h"
#include "tests/support/print_sample.h"

#include <optional>

namespace amperly {

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
