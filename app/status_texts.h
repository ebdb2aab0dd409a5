// Tooltip and spoken label of the status item, made anew only when a figure in them shows
// differently: most ticks change nothing that anybody can read.
#pragma once

#include "platform/power_sample.h"

#include <optional>
#include <string>
#include <string_view>

namespace amperly {

class StatusTexts {
public:
    /// Brings the texts up to date with a reading.
    void follow(const std::optional<PowerSample>& sample);

    /// Nothing while there is no reading. Views stay valid until the next follow().
    [[nodiscard]] std::optional<std::string_view> toolTip() const;
    [[nodiscard]] std::string_view spokenLabel() const { return m_spokenLabel; }

private:
    enum class BatteryFlow { Unknown, Idle, Charging, Draining };

    /// What the texts depend on, as far as it shows.
    struct Shown {
        std::string load;
        std::string adapter;
        std::string battery;
        BatteryFlow flow = BatteryFlow::Unknown;
        std::optional<int> percent;
        bool external = false;
        bool unplugged = false;
        friend bool operator==(const Shown&, const Shown&) = default;
    };
    [[nodiscard]] static Shown shownOf(const PowerSample& sample);

    bool m_isCurrent = false;
    std::optional<Shown> m_shown;
    std::string m_toolTip;
    std::string m_spokenLabel;
};

} // namespace amperly
