#include "platform/simulated/laptop/wandering_load.h"

#include <algorithm>
#include <cmath>

namespace amperly {

namespace {

// Each layer of the load has a stream of numbers of its own.
constexpr std::uint64_t kDriftStream = 0x9e3779b97f4a7c15;
constexpr std::uint64_t kBurstStream = 0xbf58476d1ce4e5b9;
constexpr std::uint64_t kBoostStream = 0x94d049bb133111eb;

/// A number from 0 up to 1 that looks random and depends on nothing but its arguments.
double chance(std::uint64_t seed, std::uint64_t stream, std::int64_t cell)
{
    std::uint64_t mixed = seed * stream + static_cast<std::uint64_t>(cell) * 0xd1342543de82ef95;
    mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9;
    mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111eb;
    mixed ^= mixed >> 31;
    return static_cast<double>(mixed >> 11) * 0x1p-53;
}

double smoothStep(double position)
{
    const double inside = std::clamp(position, 0.0, 1.0);
    return inside * inside * (3 - 2 * inside);
}

/// Where `seconds` lies in a row of cells of equal length.
struct CellPosition {
    std::int64_t cell;
    double inside; ///< 0 at the cell's start, towards 1 at its end
};

CellPosition positionIn(double cellSeconds, double seconds)
{
    const double cells = seconds / cellSeconds;
    const double cell = std::floor(cells);
    return {static_cast<std::int64_t>(cell), cells - cell};
}

/// Joins random numbers at the cells' edges, from 0 to 1.
double drift(std::uint64_t seed, double cellSeconds, double seconds)
{
    const CellPosition at = positionIn(cellSeconds, seconds);
    const double from = chance(seed, kDriftStream, at.cell);
    const double to = chance(seed, kDriftStream, at.cell + 1);
    return from + (to - from) * smoothStep(at.inside);
}

/// In `probability` of the cells something happens: 0 outside, up to 1 within, ramps between.
double event(std::uint64_t seed, std::uint64_t stream, double probability, double cellSeconds, double seconds)
{
    const CellPosition at = positionIn(cellSeconds, seconds);
    if (chance(seed, stream, 2 * at.cell) >= probability)
        return 0;
    constexpr double kRamp = 0.15; // of a cell
    const double height = 0.4 + 0.6 * chance(seed, stream, 2 * at.cell + 1);
    return height * smoothStep(at.inside / kRamp) * smoothStep((1 - at.inside) / kRamp);
}

constexpr double kDriftWatts = 13.0; // reading, writing, a few pages open
constexpr double kDriftSeconds = 20.0;
constexpr double kBurstWatts
    = WanderingLoad::kHighestOrdinaryWatts - WanderingLoad::kLowestWatts - kDriftWatts;
constexpr double kBurstSeconds = 30.0;
constexpr double kBoostSeconds = 90.0;

} // namespace

double WanderingLoad::ordinaryWattsAt(double seconds) const
{
    return kLowestWatts + kDriftWatts * drift(m_seed, kDriftSeconds, seconds)
        + kBurstWatts * event(m_seed, kBurstStream, 0.35, kBurstSeconds, seconds);
}

double WanderingLoad::wattsAt(double seconds) const
{
    constexpr double kBoostWatts = kHighestWatts - kHighestOrdinaryWatts;
    return ordinaryWattsAt(seconds) + kBoostWatts * event(m_seed, kBoostStream, 0.15, kBoostSeconds, seconds);
}

} // namespace amperly
