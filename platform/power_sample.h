// One reading of the machine's power flows.
#pragma once

#include <optional>

namespace amperly {

/// Power in watts. The six figures come first, so that a sample can be written as a list of them.
struct PowerSample {
    double systemLoad = 0.0; ///< drawn by the computer, never negative
    double adapterIn = 0.0; ///< delivered by the adapter, never negative
    double battery = 0.0; ///< into the battery while positive, out of it while negative
    std::optional<int> adapterRating{}; ///< rated watts of the connected adapter
    std::optional<int> batteryPercent{};
    bool externalConnected = false;

    // Many machines cannot measure all three flows. A figure that is not known holds 0 and must
    // be shown as a dash, left out of averages and feed no flow.
    bool systemLoadKnown = true;
    bool adapterInKnown = true;
    bool batteryKnown = true;
    /// Off where nothing tells whether external power is connected; externalConnected is then off too.
    bool externalKnown = true;

    /// Whether the battery has to carry the computer, for all that anybody knows.
    [[nodiscard]] bool isUnplugged() const { return externalKnown && !externalConnected; }

    friend bool operator==(const PowerSample&, const PowerSample&) = default;
};

} // namespace amperly
