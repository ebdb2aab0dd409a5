// What a laptop draws while somebody works on it: a slow drift, bursts while something builds
// or plays, now and then a boost. A pure function of time, so that every run of a demo and of a
// test sees the same day, however its steps fall.
#pragma once

#include <cstdint>

namespace amperly {

class WanderingLoad {
public:
    /// Loads with the same `seed` are the same load.
    explicit WanderingLoad(std::uint64_t seed = 1) : m_seed(seed) { }

    static constexpr double kLowestWatts = 5.0; ///< screen dimmed, nothing to do
    static constexpr double kHighestOrdinaryWatts = 45.0; ///< drift and burst together
    static constexpr double kHighestWatts = 110.0; ///< every core and the graphics boosting

    /// Watts at `seconds` on the laptop's clock, between kLowestWatts and kHighestWatts.
    [[nodiscard]] double wattsAt(double seconds) const;

    /// The same without boosts, between kLowestWatts and kHighestOrdinaryWatts.
    [[nodiscard]] double ordinaryWattsAt(double seconds) const;

private:
    std::uint64_t m_seed;
};

} // namespace amperly
