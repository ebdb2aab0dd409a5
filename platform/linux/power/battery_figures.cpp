#include "platform/linux/power/battery_figures.h"

#include <algorithm>
#include <cmath>

namespace amperly {

namespace {

// Between a single cell that is nearly dead and the packs of the largest uninterruptible supplies.
constexpr double kLowestVolts = 1.0;
constexpr double kHighestVolts = 100.0;

// Firmware that can't say 0 says 1 mA.
constexpr double kIdleAmperes = 0.0015;
// Where a gauge gives power only, the same at the voltage of three cells.
constexpr double kUsualVolts = 12.0;

// A gauge that has not learnt the capacity yet overshoots a little; beyond this it is confused.
constexpr double kHighestPercent = 105.0;

std::optional<double> inUnits(const SupplyAttributes& attributes, Attribute attribute)
{
    const std::optional<std::int64_t> micro = attributes.number(attribute);
    if (!micro)
        return std::nullopt;
    return static_cast<double>(*micro) / 1e6;
}

std::optional<double> plausibleVolts(const SupplyAttributes& attributes)
{
    const std::optional<double> volts = inUnits(attributes, Attribute::VoltageNow);
    if (!volts || *volts < kLowestVolts || *volts > kHighestVolts)
        return std::nullopt;
    return volts;
}

/// Power with whatever sign the driver gives it.
std::optional<double> driverWatts(const SupplyAttributes& attributes)
{
    std::optional<double> watts = inUnits(attributes, Attribute::PowerNow);
    if (!watts) {
        const std::optional<double> amperes = inUnits(attributes, Attribute::CurrentNow);
        const std::optional<double> volts = plausibleVolts(attributes);
        if (!amperes || !volts)
            return std::nullopt;
        watts = *amperes * *volts;
    }
    if (std::abs(*watts) > kHighestBatteryWatts)
        return std::nullopt;
    return watts;
}

/// Whether the rate is what firmware reports for no flow at all. A current needs no voltage for that.
bool isIdle(const SupplyAttributes& attributes)
{
    if (const std::optional<double> watts = inUnits(attributes, Attribute::PowerNow))
        return std::abs(*watts) <= kIdleAmperes * plausibleVolts(attributes).value_or(kUsualVolts);
    const std::optional<double> amperes = inUnits(attributes, Attribute::CurrentNow);
    return amperes && std::abs(*amperes) <= kIdleAmperes;
}

/// +1 into the battery, −1 out of it, 0 where nobody can tell.
int direction(const SupplyReading& battery, double watts)
{
    switch (battery.attributes.status()) {
    case SupplyStatus::Charging:
        return 1;
    case SupplyStatus::Discharging:
        return -1;
    case SupplyStatus::Unknown:
    case SupplyStatus::NotCharging:
    case SupplyStatus::Full:
        break;
    }
    if (battery.traits.hasSignedRate)
        return watts < 0 ? -1 : 1;
    return 0;
}

/// Power into the battery.
std::optional<double> batteryWatts(const SupplyReading& battery)
{
    const SupplyStatus status = battery.attributes.status();
    const bool isMoving = status == SupplyStatus::Charging || status == SupplyStatus::Discharging;
    if (!isMoving && isIdle(battery.attributes))
        return 0.0;
    const std::optional<double> watts = driverWatts(battery.attributes);
    if (!watts)
        return std::nullopt;
    const int sign = direction(battery, *watts);
    if (sign == 0)
        return std::nullopt;
    return sign * std::abs(*watts);
}

std::optional<double> clampedPercent(double percent)
{
    if (!(percent >= 0 && percent <= kHighestPercent))
        return std::nullopt;
    return std::min(percent, 100.0);
}

/// How much a battery holds, in any unit that it shares with the others.
struct Content {
    double now = 0;
    double full = 0;
};

std::optional<Content> content(const SupplyAttributes& attributes, Attribute now, Attribute full)
{
    const std::optional<double> nowUnits = inUnits(attributes, now);
    const std::optional<double> fullUnits = inUnits(attributes, full);
    if (!nowUnits || !fullUnits || *fullUnits <= 0)
        return std::nullopt;
    if (!clampedPercent(*nowUnits / *fullUnits * 100.0))
        return std::nullopt;
    return Content{*nowUnits, *fullUnits};
}

/// Σnow / Σfull, if every battery tells both and believably.
std::optional<double> percentOfContents(
    std::span<const SupplyReading> supplies, Attribute now, Attribute full)
{
    Content sum;
    for (const SupplyReading& supply : supplies) {
        if (supply.attributes.type() != SupplyType::Battery || !supply.attributes.counts())
            continue;
        const std::optional<Content> one = content(supply.attributes, now, full);
        if (!one)
            return std::nullopt;
        sum.now += one->now;
        sum.full += one->full;
    }
    if (!(sum.full > 0))
        return std::nullopt;
    return clampedPercent(sum.now / sum.full * 100.0);
}

/// Mean of the gauges' percentages.
std::optional<double> percentOfGauges(std::span<const SupplyReading> supplies)
{
    double sum = 0;
    int count = 0;
    for (const SupplyReading& supply : supplies) {
        if (supply.attributes.type() != SupplyType::Battery || !supply.attributes.counts())
            continue;
        const std::optional<std::int64_t> capacity = supply.attributes.number(Attribute::Capacity);
        const std::optional<double> percent
            = capacity ? clampedPercent(static_cast<double>(*capacity)) : std::nullopt;
        if (!percent)
            return std::nullopt;
        sum += *percent;
        ++count;
    }
    if (count == 0)
        return std::nullopt;
    return sum / count;
}

bool hasNonsenseCapacity(std::span<const SupplyReading> supplies)
{
    return std::any_of(supplies.begin(), supplies.end(), [](const SupplyReading& supply) {
        const std::optional<std::int64_t> capacity = supply.attributes.number(Attribute::Capacity);
        return supply.attributes.type() == SupplyType::Battery && supply.attributes.counts() && capacity
            && !clampedPercent(static_cast<double>(*capacity));
    });
}

std::optional<int> combinedPercent(std::span<const SupplyReading> supplies, int batteryCount)
{
    // A gauge that calls its own percentage 1536 has not counted its charge any better.
    if (hasNonsenseCapacity(supplies))
        return std::nullopt;

    const std::optional<double> gauges = percentOfGauges(supplies);
    std::optional<double> percent = batteryCount == 1 ? gauges : std::nullopt;
    if (!percent)
        percent = percentOfContents(supplies, Attribute::EnergyNow, Attribute::EnergyFull);
    if (!percent)
        percent = percentOfContents(supplies, Attribute::ChargeNow, Attribute::ChargeFull);
    if (!percent)
        percent = gauges;
    if (!percent)
        return std::nullopt;
    return static_cast<int>(std::lround(*percent));
}

} // namespace

BatteryFigures batteryFigures(std::span<const SupplyReading> supplies)
{
    BatteryFigures figures;
    double sum = 0;
    bool isSumKnown = true;
    for (const SupplyReading& supply : supplies) {
        const SupplyAttributes& attributes = supply.attributes;
        if (attributes.type() != SupplyType::Battery || !attributes.counts())
            continue;
        ++figures.count;

        const SupplyStatus status = attributes.status();
        figures.isAnyCharging |= status == SupplyStatus::Charging;
        figures.isAnyDischarging |= status == SupplyStatus::Discharging;
        figures.isAnyIdle |= status == SupplyStatus::Full || status == SupplyStatus::NotCharging;

        const std::optional<double> watts = batteryWatts(supply);
        isSumKnown = isSumKnown && watts;
        sum += watts.value_or(0);
        figures.hasRate = figures.hasRate || (watts && !isIdle(attributes));
    }
    if (figures.count == 0)
        return figures;
    if (isSumKnown)
        figures.watts = sum;
    figures.percent = combinedPercent(supplies, figures.count);
    return figures;
}

} // namespace amperly
