// What a machine has to meter more than its battery: sensors of the whole system's power, and the
// processor's energy counter of the platform where the system lets us read it.
#pragma once

#include "platform/linux/power/hwmon_meters.h"
#include "platform/linux/power/power_balance.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace amperly {

/// Power from a counter of energy, which is all that the processor gives.
class EnergyCounter {
public:
    /// The counter starts again at 0 after `rangeMicrojoules`; 0 where that is not known.
    explicit EnergyCounter(std::int64_t rangeMicrojoules = 0) : m_range(rangeMicrojoules) { }

    /// Mean watts since the last call, given the counter and a clock that never goes back.
    /// Nothing at first, after a long pause, or when the counter does not move.
    [[nodiscard]] std::optional<double> watts(std::int64_t microjoules, double seconds);

private:
    struct Point {
        std::int64_t microjoules = 0;
        double seconds = 0;
    };

    std::int64_t m_range;
    std::optional<Point> m_last{};
    std::optional<double> m_watts{};
};

class PowerMeters {
public:
    /// `root` is where sysfs is mounted; `monotonicSeconds` a clock that never goes back.
    /// `files` must outlive this.
    PowerMeters(SystemFiles& files, const std::string& root, std::function<double()> monotonicSeconds);

    /// Reads each meter once. `devicesChanged` says that the lists of devices may be out of
    /// date; besides, they are checked now and then.
    [[nodiscard]] MeteredPower read(bool devicesChanged);

    /// Whether there is a meter at all, with or without a figure at this moment.
    [[nodiscard]] bool hasAny() const;

private:
    void findPlatformMeter();
    [[nodiscard]] std::optional<double> readWatts(KeptFile& file);
    [[nodiscard]] std::optional<double> readPlatformMeter();
    [[nodiscard]] std::optional<std::int64_t> readNumber(KeptFile& file, bool& wasReplaced);

    SystemFiles& m_files;
    std::function<double()> m_monotonicSeconds;
    KeptFolder m_hwmon;
    KeptFolder m_powercap;
    HwmonMeters m_meters;
    KeptFile m_platformEnergy;
    EnergyCounter m_platformCounter;
    bool m_isHwmonOutOfDate = false;
    bool m_isPowercapOutOfDate = false;
    std::uint32_t m_turn = 0;
};

} // namespace amperly
