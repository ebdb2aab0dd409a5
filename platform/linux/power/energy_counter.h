// Power from a counter of energy, which is all that the processor's own meter gives.
#pragma once

#include <cstdint>
#include <optional>

namespace amperly {

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

} // namespace amperly
