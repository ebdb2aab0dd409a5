// What only the name of a supply tells: its driver, and with it how some attributes are meant.
#pragma once

#include "platform/linux/power/supply_attributes.h"

#include <cstdint>
#include <string_view>

namespace amperly {

/// Which attributes of an external supply are the adapter's rating.
enum class RatingSource : std::uint8_t {
    None,
    InputPowerLimit,
    Contract, ///< voltage_now × current_now are what was negotiated, not what flows
    DesignMaximum, ///< voltage_max_design × current_max
};

struct SupplyTraits {
    RatingSource rating = RatingSource::None;
    /// The rate is known to be negative while discharging, whatever the status says.
    bool hasSignedRate = false;
    /// `online` says 1 for ever, so it says nothing.
    bool isAlwaysOnline = false;
};

[[nodiscard]] SupplyTraits supplyTraits(std::string_view name);

/// One supply at one moment.
struct SupplyReading {
    SupplyTraits traits{};
    SupplyAttributes attributes{};
};

} // namespace amperly
