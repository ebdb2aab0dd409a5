#include "flow/diagram_layout.h"

#include <algorithm>

namespace amperly {

namespace {

constexpr double kHalfWidth = kNodeWidth / 2.0;
constexpr double kHalfHeight = kNodeHeight / 2.0;
constexpr double kTopRow = 41.0; ///< of the upper nodes' centres
constexpr double kBend = 0.55; ///< how much of a side a bent tube goes straight on

constexpr double kLeastFullScale = 60.0;
constexpr double kThinnest = 9.0;
constexpr double kThickening = 14.0;

} // namespace

DiagramLayout diagramLayout(double width, double height)
{
    DiagramLayout layout;
    layout.charger = {kHalfWidth, kTopRow};
    layout.computer = {width - kHalfWidth, kTopRow};
    layout.battery = {width / 2.0, height - kHalfHeight};

    layout.chargerToMac = {
        .p0 = {layout.charger.x + kHalfWidth, layout.charger.y},
        .p1 = {width / 2.0, layout.charger.y},
        .p2 = {width / 2.0, layout.computer.y},
        .p3 = {layout.computer.x - kHalfWidth, layout.computer.y},
    };
    {
        const FlowPoint start{layout.charger.x, layout.charger.y + kHalfHeight};
        const FlowPoint end{layout.battery.x - kHalfWidth, layout.battery.y};
        layout.chargerToBattery = {
            .p0 = start,
            .p1 = {start.x, start.y + (end.y - start.y) * kBend},
            .p2 = {end.x - (end.x - start.x) * kBend, end.y},
            .p3 = end,
        };
    }
    {
        const FlowPoint start{layout.battery.x + kHalfWidth, layout.battery.y};
        const FlowPoint end{layout.computer.x, layout.computer.y + kHalfHeight};
        layout.batteryToMac = {
            .p0 = start,
            .p1 = {start.x + (end.x - start.x) * kBend, start.y},
            .p2 = {end.x, end.y - (end.y - start.y) * kBend},
            .p3 = end,
        };
    }
    return layout;
}

double fullScaleWatts(const PowerSample& sample)
{
    return std::max({kLeastFullScale, static_cast<double>(sample.adapterRating.value_or(0)),
        sample.systemLoad, sample.adapterIn});
}

double tubeWidth(double watts, double fullScale)
{
    return kThinnest + kThickening * std::min(watts / fullScale, 1.0);
}

} // namespace amperly
