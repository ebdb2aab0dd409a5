// Sensors that measure the whole machine's power, among all that a machine has.
#pragma once

#include "platform/linux/power/sysfs.h"

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

/// Looks through the sensors of `hwmon`. Of two equally good meters of the load each may
/// measure a part, so neither is used.
[[nodiscard]] HwmonMeters findHwmonMeters(SystemFiles& files, const KeptFolder& hwmon);

} // namespace amperly
