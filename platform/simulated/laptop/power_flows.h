// Where the simulated laptop's power goes at one instant.
#pragma once

namespace amperly {

/// Watts. adapterIn is always systemLoad + battery.
struct PowerFlows {
    double systemLoad = 0; ///< drawn by the machine, never negative
    double adapterIn = 0; ///< delivered by the adapter, never negative
    double battery = 0; ///< into the battery while positive, out of it while negative
    friend bool operator==(const PowerFlows&, const PowerFlows&) = default;
};

} // namespace amperly
