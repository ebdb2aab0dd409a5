// Supplies that say anything at all: whatever drivers and firmware come up with, the figures
// stay within what a machine can have.

#include "platform/linux/power/external_power.h"
#include "platform/linux/power/power_balance.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace {

using namespace amperly;

void hold(bool condition)
{
    if (!condition)
        std::abort();
}

void holdFinite(std::optional<double> value)
{
    hold(!value || std::isfinite(*value));
}

constexpr std::array<std::string_view, 6> kNames{
    "BAT0", "AC", "ucsi-source-psy-USBC000:001", "macsmc-battery", "macsmc-ac", "CROS_USBPD_CHARGER0"};

/// The bytes are uevents, one after the other, with a NUL between them.
std::vector<SupplyReading> suppliesIn(std::string_view bytes)
{
    std::vector<SupplyReading> supplies;
    while (!bytes.empty() && supplies.size() < kNames.size()) {
        const std::size_t end = bytes.find('\0');
        const std::string_view name = kNames[supplies.size()];
        supplies.push_back({supplyTraits(name), SupplyAttributes::fromUevent(bytes.substr(0, end))});
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
    }
    return supplies;
}

void checkFigures(const BatteryFigures& batteries)
{
    holdFinite(batteries.watts);
    hold(!batteries.watts || std::abs(*batteries.watts) <= kHighestBatteryWatts * batteries.count);
    hold(!batteries.percent || (*batteries.percent >= 0 && *batteries.percent <= 100));
    hold(batteries.count > 0 || (!batteries.watts && !batteries.percent));
}

void checkBalance(const PowerBalance& balance)
{
    holdFinite(balance.battery);
    holdFinite(balance.adapterIn);
    holdFinite(balance.systemLoad);
    hold(balance.adapterIn.value_or(0) >= 0);
    hold(balance.systemLoad.value_or(0) >= 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::vector<SupplyReading> supplies = suppliesIn({reinterpret_cast<const char*>(data), size});
    const BatteryFigures batteries = batteryFigures(supplies);
    checkFigures(batteries);
    const std::optional<int> rating = adapterRating(supplies);
    hold(!rating || (*rating >= 0 && *rating <= 400));

    const std::optional<bool> connected = externalConnected(supplies, batteries);
    for (const MeteredPower& metered : {MeteredPower{}, MeteredPower{.systemLoad = 15.0},
             MeteredPower{.adapterIn = 30.0}, MeteredPower{.systemLoad = 15.0, .adapterIn = 30.0}})
        checkBalance(powerBalance(connected, batteries, metered));
    return 0;
}
