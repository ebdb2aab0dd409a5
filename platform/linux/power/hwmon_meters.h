// Sensors that measure the whole machine's power, among all that a machine has.
#pragma once

#include "platform/linux/power/class_listing.h"
#include "platform/linux/power/kept_file.h"

#include <cstdint>

namespace amperly {

/// How much a sensor of the system's load is trusted, most first.
enum class LoadMeter : std::uint8_t {
    Controller, ///< the power controller of machines that have one
    PowerSupplyUnit, ///< all that a desktop's supply gives
    FirmwareMeter, ///< whatever the firmware calls its power meter
    None,
};

/// The files of the sensors, in microwatts. Not open where there is no such sensor.
struct HwmonMeters {
    LoadMeter loadMeter = LoadMeter::None;
    KeptFile systemLoad{};
    KeptFile adapterIn{};
};

/// Looks through the sensors of `hwmon`. Two equally good meters of the load measure a part each,
/// or nobody knows what, so they count for none.
[[nodiscard]] HwmonMeters findHwmonMeters(SystemFiles& files, const ClassListing& hwmon);

} // namespace amperly
