// The machine's power as far as the kernel's files tell it, for machines with a battery, several,
// or none. What a machine can't measure is unknown, not 0.
#pragma once

#include "platform/linux/power/power_meters.h"
#include "platform/linux/power/power_supplies.h"
#include "platform/power_source.h"

#include <functional>
#include <optional>
#include <string>

namespace amperly {

class LinuxPowerSource final : public PowerSource {
public:
    /// Reads sysfs at `root` through `files`, which must outlive this. `monotonicSeconds` is a
    /// clock that never goes back; the steady clock where it is empty.
    explicit LinuxPowerSource(
        SystemFiles& files, const std::string& root = "/sys", std::function<double()> monotonicSeconds = {});

    /// Reads all supplies and meters once.
    [[nodiscard]] std::optional<PowerSample> read() override;

private:
    SystemFiles& m_files;
    PowerSupplies m_supplies;
    PowerMeters m_meters;
};

} // namespace amperly
