// Whatever on this machine measures more than the battery: sensors of the whole system's power,
// and the processor's meter of the platform where the system lets us read it.
#pragma once

#include "platform/linux/power/class_listing.h"
#include "platform/linux/power/energy_counter.h"
#include "platform/linux/power/hwmon_meters.h"
#include "platform/linux/power/power_balance.h"

#include <functional>
#include <span>
#include <string>

namespace amperly {

class MeasuredSources {
public:
    /// `root` is where sysfs is mounted; `monotonicSeconds` a clock that never goes back.
    /// `files` must outlive this.
    MeasuredSources(SystemFiles& files, const std::string& root, std::function<double()> monotonicSeconds);

    /// Reads each meter once. `devicesChanged` says that the lists of devices may be out of
    /// date; besides, they are checked now and then.
    [[nodiscard]] MeasuredPower read(bool devicesChanged);

    /// Whether there is a meter at all, with or without a figure at this moment.
    [[nodiscard]] bool hasAny() const;

private:
    void findPlatformMeter();
    [[nodiscard]] std::optional<double> readWatts(KeptFile& file);
    [[nodiscard]] std::optional<double> readPlatformMeter();
    [[nodiscard]] std::optional<std::int64_t> readNumber(KeptFile& file, bool& wasReplaced);

    SystemFiles& m_files;
    std::function<double()> m_monotonicSeconds;
    ClassListing m_hwmon;
    ClassListing m_powercap;
    HwmonMeters m_meters;
    KeptFile m_platformEnergy;
    EnergyCounter m_platformCounter;
    bool m_isHwmonOutOfDate = false;
    bool m_isPowercapOutOfDate = false;
    std::uint32_t m_turn = 0;
};

} // namespace amperly
