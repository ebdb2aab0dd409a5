#include "flow/glass/glow_grid.h"

#include <algorithm>
#include <cmath>

namespace amperly::glass {

namespace {

// Points from a node to the next. Cells of twice this leave the narrowest blur of a tube of 9
// points, 6.3 points, without a visible trace; narrower tubes need narrower cells.
constexpr double kNodeStep = 4.0;
constexpr double kNarrowestForNodeStep = 9.0;
constexpr double kLeastShareOfNodeStep = 1.0 / 3.0;

// Light from outside of the canvas falls in from so far. Points.
constexpr double kMargin = 48.0;

constexpr int roundedUpToEven(int count)
{
    return count + count % 2;
}

} // namespace

GlowGrid GlowGrid::forCanvas(int width, int height, double scale, double narrowestTube)
{
    const double share = std::clamp(narrowestTube / kNarrowestForNodeStep, kLeastShareOfNodeStep, 1.0);
    GlowGrid grid;
    grid.step = std::max(1, static_cast<int>(std::lround(kNodeStep * share * scale)));
    grid.margin = roundedUpToEven(static_cast<int>(std::ceil(kMargin * scale / grid.step)));
    grid.canvasColumns = (width + grid.step - 1) / grid.step + 1;
    grid.canvasRows = (height + grid.step - 1) / grid.step + 1;
    grid.columns = roundedUpToEven(grid.canvasColumns + 2 * grid.margin);
    grid.rows = roundedUpToEven(grid.canvasRows + 2 * grid.margin);
    return grid;
}

} // namespace amperly::glass
