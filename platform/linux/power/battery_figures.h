// All batteries of the machine as one. Magnitudes come from the numbers and directions from the
// status, because drivers disagree about signs: some have none, most count discharging as
// negative, some charging.
#pragma once

#include "platform/linux/power/supply_reading.h"

#include <optional>
#include <span>

namespace amperly {

/// More than any battery gives or takes; a figure beyond is a broken gauge's.
inline constexpr double kHighestBatteryWatts = 300.0;

struct BatteryFigures {
    int count = 0; ///< batteries in their places

    /// Into the batteries while positive. Nothing where one of them does not tell how much, or
    /// which way.
    std::optional<double> watts{};
    /// Whether the rate of any of them is more than what firmware reports for no flow at all.
    bool hasRate = false;

    std::optional<int> percent{}; ///< 0–100, of all their capacity together

    bool isAnyCharging = false;
    bool isAnyDischarging = false;
    bool isAnyIdle = false; ///< full, or plugged in without charging
};

/// Supplies that are no batteries, or not in their places, are passed over.
[[nodiscard]] BatteryFigures batteryFigures(std::span<const SupplyReading> supplies);

} // namespace amperly
