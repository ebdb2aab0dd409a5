// Where things are in the power flow diagram: charger top left, computer top right, battery
// bottom centre, and the curves between them. Points of the diagram, y growing downward.
#pragma once

#include "flow/glass/curve.h"
#include "platform/power_sample.h"

namespace amperly {

inline constexpr double kNodeWidth = 84.0;
inline constexpr double kNodeHeight = 74.0;

struct DiagramLayout {
    // The nodes' centres.
    FlowPoint charger;
    FlowPoint computer;
    FlowPoint battery;

    Bezier chargerToMac;
    Bezier chargerToBattery; ///< leaves straight down, arrives horizontally
    Bezier batteryToMac; ///< leaves horizontally, arrives straight up

    friend bool operator==(const DiagramLayout&, const DiagramLayout&) = default;
};

[[nodiscard]] DiagramLayout diagramLayout(double width, double height);

/// The watts at which a tube is as wide as it can be.
[[nodiscard]] double fullScaleWatts(const PowerSample& sample);

/// A flow of no more than this is not drawn.
inline constexpr double kLeastDrawnWatts = 0.05;

/// Points, from 9 to 23.
[[nodiscard]] double tubeWidth(double watts, double fullScale);

} // namespace amperly
