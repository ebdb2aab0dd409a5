// Names in the registry's battery entry, which every back end presents and one reader reads.
#pragma once

#include <string_view>

namespace amperly::battery_entry {

/// Class of the battery controller's service.
inline constexpr std::string_view kClassName = "AppleSmartBattery";

// Properties of the entry.
inline constexpr std::string_view kExternalConnected = "ExternalConnected"; ///< boolean
inline constexpr std::string_view kAdapterDetails = "AdapterDetails"; ///< dictionary, kWatts
inline constexpr std::string_view kCurrentCapacity = "CurrentCapacity"; ///< percent
inline constexpr std::string_view kPowerTelemetryData = "PowerTelemetryData"; ///< dictionary, below
inline constexpr std::string_view kVoltage = "Voltage"; ///< millivolts
inline constexpr std::string_view kInstantAmperage
    = "InstantAmperage"; ///< milliamperes, positive into the battery

// Entry of kAdapterDetails.
inline constexpr std::string_view kWatts = "Watts"; ///< the adapter's rating

// Entries of kPowerTelemetryData, each in whole milliwatts and there only if something measures it.
inline constexpr std::string_view kBatteryPower = "BatteryPower"; ///< positive into the battery
inline constexpr std::string_view kSystemPowerIn = "SystemPowerIn";
inline constexpr std::string_view kSystemLoad = "SystemLoad";

// Entries of kPowerTelemetryData, booleans that are true where a machine has no way to know the
// figure, so that it must not be worked out from the others or shown as 0. Controllers that
// measure everything never have them.
inline constexpr std::string_view kBatteryPowerUnknown = "BatteryPowerUnknown";
inline constexpr std::string_view kSystemPowerInUnknown = "SystemPowerInUnknown";
inline constexpr std::string_view kSystemLoadUnknown = "SystemLoadUnknown";
/// Why kExternalConnected is missing: it could be either.
inline constexpr std::string_view kExternalUnknown = "ExternalUnknown";

} // namespace amperly::battery_entry
