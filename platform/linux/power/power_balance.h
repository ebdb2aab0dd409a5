// The three flows, each as far as it can be known: what comes in equals what the computer
// draws plus what goes into the battery, and on most machines only the battery is metered.
#pragma once

#include "platform/linux/power/battery_figures.h"

#include <optional>

namespace amperly {

/// Flows that something besides the batteries measures, in watts.
struct MeteredPower {
    std::optional<double> systemLoad{};
    std::optional<double> adapterIn{};

    friend bool operator==(const MeteredPower&, const MeteredPower&) = default;
};

/// Watts; nothing where a flow is unknown, which is something other than 0.
struct PowerBalance {
    std::optional<double> battery{}; ///< into the battery while positive
    std::optional<double> adapterIn{}; ///< never negative
    std::optional<double> systemLoad{}; ///< never negative

    friend bool operator==(const PowerBalance&, const PowerBalance&) = default;
};

[[nodiscard]] PowerBalance powerBalance(
    std::optional<bool> externalConnected, const BatteryFigures& batteries, const MeteredPower& metered);

} // namespace amperly
