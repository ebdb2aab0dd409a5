// Smooths the three flows of the diagram between readings and carries their pulses along. It is
// moved by the frames of the display, whatever their rate.
#pragma once

#include "platform/power_sample.h"

#include <array>
#include <optional>

namespace amperly {

/// The three flows of power, in watts, none negative.
struct Flows {
    double chargerToMac = 0.0;
    double chargerToBattery = 0.0;
    double batteryToMac = 0.0;
    friend bool operator==(const Flows&, const Flows&) = default;
};

/// What a sample says of the flows. A figure that is not known makes none.
[[nodiscard]] Flows flowTargets(const PowerSample& sample);

/// An adapter or an input of less than this, in watts, counts as delivering nothing.
inline constexpr double kChargerActiveWatts = 0.5;

class FlowAnimator {
public:
    FlowAnimator() = default;
    FlowAnimator(const FlowAnimator&) = delete;
    FlowAnimator& operator=(const FlowAnimator&) = delete;

    /// One frame, at `now` in seconds of any clock that does not run backwards. The first frame
    /// advances nothing, and one that comes late no more than a tenth of a second.
    void step(const PowerSample& sample, double now);

    /// For those who want nothing to move: the flows are what the sample says, at once, and the
    /// pulses stay where they are.
    void settle(const PowerSample& sample) { m_flows = flowTargets(sample); }

    /// Smoothed.
    [[nodiscard]] double chargerToMac() const { return m_flows.chargerToMac; }
    [[nodiscard]] double chargerToBattery() const { return m_flows.chargerToBattery; }
    [[nodiscard]] double batteryToMac() const { return m_flows.batteryToMac; }
    [[nodiscard]] const Flows& flows() const { return m_flows; }

    /// How far in points the pulses of each flow have moved, from 0 to 10000: charger to
    /// computer, charger to battery, battery to computer.
    [[nodiscard]] const std::array<double, 3>& travelled() const { return m_travelled; }

    /// The time of the latest frame; nothing before the first.
    [[nodiscard]] std::optional<double> last() const { return m_last; }

private:
    void smooth(const Flows& targets);
    void travel();

    Flows m_flows;
    std::array<double, 3> m_travelled{};
    std::optional<double> m_last;
    double m_interval = 0.0; ///< seconds from the frame before to the current one
};

} // namespace amperly
