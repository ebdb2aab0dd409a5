// A laptop's day in two minutes: on battery, on chargers from 20 to 140 W, full, boosting beyond
// its charger, almost empty, and back. Then the next day begins.
//
// The load changes at a pace that people can watch; only the charge passes faster, in each
// scene by as much as it takes to get somewhere.
#pragma once

#include "platform/simulated/laptop/simulated_laptop.h"

#include <cstdint>

namespace amperly {

class SimulatedDay {
public:
    static constexpr double kLengthSeconds = 120.0;

    /// Takes charge of the laptop's chargers, load and charge, which it sets for the morning.
    /// `laptop` must outlive the day.
    explicit SimulatedDay(SimulatedLaptop& laptop);

    /// Brings the laptop to where it is `realSeconds` into the first day. Its state follows from
    /// this number alone, in whatever steps it comes; a smaller one than before begins
    /// the first day anew. Negative counts as 0.
    void advanceTo(double realSeconds);

private:
    void beginAnew();
    void takeStep();

    SimulatedLaptop& m_laptop;
    WanderingLoad m_variation;
    std::int64_t m_steps = 0;
};

} // namespace amperly
