#include "platform/linux/power/external_power.h"

#include <algorithm>
#include <cmath>

namespace amperly {

namespace {

// The extended range of USB ends at 48 V and 240 W; barrel plugs of large laptops at 330 W.
constexpr double kHighestRating = 400.0;
constexpr double kLowestRating = 0.5;

bool isExternal(const SupplyReading& supply)
{
    return supply.attributes.type() == SupplyType::External && supply.attributes.counts()
        && !supply.traits.isAlwaysOnline;
}

/// 2 means a programmable supply, which is one as well.
bool isOnline(const SupplyReading& supply)
{
    return isExternal(supply) && supply.attributes.number(Attribute::Online).value_or(0) > 0;
}

std::optional<double> product(const SupplyAttributes& attributes, Attribute volts, Attribute amperes)
{
    const std::optional<std::int64_t> microvolts = attributes.number(volts);
    const std::optional<std::int64_t> microamperes = attributes.number(amperes);
    if (!microvolts || !microamperes)
        return std::nullopt;
    return static_cast<double>(*microvolts) / 1e6 * (static_cast<double>(*microamperes) / 1e6);
}

std::optional<double> ratedWatts(const SupplyReading& supply)
{
    switch (supply.traits.rating) {
    case RatingSource::None:
        return std::nullopt;
    case RatingSource::InputPowerLimit:
        if (const std::optional<std::int64_t> microwatts
            = supply.attributes.number(Attribute::InputPowerLimit))
            return static_cast<double>(*microwatts) / 1e6;
        return std::nullopt;
    case RatingSource::Contract:
        return product(supply.attributes, Attribute::VoltageNow, Attribute::CurrentNow);
    case RatingSource::DesignMaximum:
        return product(supply.attributes, Attribute::VoltageMaxDesign, Attribute::CurrentMax);
    }
    return std::nullopt;
}

} // namespace

std::optional<bool> externalConnected(
    std::span<const SupplyReading> supplies, const BatteryFigures& batteries)
{
    if (std::any_of(supplies.begin(), supplies.end(), isOnline))
        return true;
    // Some sockets go unreported while tens of watts flow in through them.
    if (batteries.isAnyCharging)
        return true;
    if (batteries.isAnyDischarging || std::any_of(supplies.begin(), supplies.end(), isExternal))
        return false;
    if (batteries.count == 0 || batteries.isAnyIdle)
        return true;
    return std::nullopt;
}

std::optional<int> adapterRating(std::span<const SupplyReading> supplies)
{
    // The socket and the port's controller report the same adapter, so nothing is added up.
    std::optional<int> largest;
    for (const SupplyReading& supply : supplies) {
        const std::optional<double> watts = isOnline(supply) ? ratedWatts(supply) : std::nullopt;
        if (watts && *watts >= kLowestRating && *watts <= kHighestRating)
            largest = std::max(largest.value_or(0), static_cast<int>(std::lround(*watts)));
    }
    return largest;
}

} // namespace amperly
