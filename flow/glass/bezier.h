// A cubic curve, the way a flow takes from one node of the diagram to another.
#pragma once

namespace amperly {

/// Points of the diagram, y growing downward.
struct FlowPoint {
    double x = 0.0;
    double y = 0.0;
    friend bool operator==(const FlowPoint&, const FlowPoint&) = default;
};

/// The flow starts at `p0` and ends at `p3`.
struct Bezier {
    FlowPoint p0;
    FlowPoint p1;
    FlowPoint p2;
    FlowPoint p3;
    friend bool operator==(const Bezier&, const Bezier&) = default;
};

} // namespace amperly
