// Names in the registry's battery entry.
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

// Entries of kPowerTelemetryData, each in whole milliwatts.
inline constexpr std::string_view kBatteryPower = "BatteryPower"; ///< positive into the battery
inline constexpr std::string_view kSystemPowerIn = "SystemPowerIn";
inline constexpr std::string_view kSystemLoad = "SystemLoad";

} // namespace amperly::battery_entry
