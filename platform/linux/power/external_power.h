// Whether external power is connected, and what its adapter is rated for.
#pragma once

#include "platform/linux/power/battery_figures.h"

#include <optional>
#include <span>

namespace amperly {

/// Nothing where the supplies leave it open.
[[nodiscard]] std::optional<bool> externalConnected(
    std::span<const SupplyReading> supplies, const BatteryFigures& batteries);

/// Rated watts of the adapter behind the supplies that are online; nothing where none tells.
[[nodiscard]] std::optional<int> adapterRating(std::span<const SupplyReading> supplies);

} // namespace amperly
