#include "platform/simulated/laptop/simulated_day.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace amperly {

namespace {

// The day is played in whole steps of a fixed length, which makes its state independent of how
// often somebody looks.
constexpr double kStepsPerSecond = 10.0;

constexpr double kMorningPercent = 62.0;

struct Scene {
    double untilSecond; ///< of the day
    int adapterWatts; ///< 0 on battery
    double loadWatts; ///< about
    double speed; ///< seconds of the laptop in one of the day
};

constexpr std::array kScenes{
    Scene{12, 0, 12, 300}, // on the sofa
    Scene{22, 67, 11, 150}, // charging at the desk
    Scene{32, 140, 58, 100}, // building something on the largest charger
    Scene{42, 96, 14, 220}, // the last percents go in ever more slowly
    Scene{50, 96, 13, 300}, // full and idle
    Scene{58, 67, 92, 200}, // boosting: the battery helps the charger
    Scene{68, 30, 9, 150}, // a small charger just manages
    Scene{76, 20, 27, 200}, // one too weak for anything, however light the work
    Scene{97, 0, 29, 314}, // a long way home
    Scene{102, 0, 14, 120}, // all but empty, the machine slows down
    Scene{120, 140, 14, 140}, // and recovers
};
static_assert(kScenes.back().untilSecond == SimulatedDay::kLengthSeconds);

const Scene& sceneAt(double secondOfDay)
{
    return *std::find_if(kScenes.begin(), kScenes.end() - 1,
        [secondOfDay](const Scene& scene) { return secondOfDay < scene.untilSecond; });
}

} // namespace

SimulatedDay::SimulatedDay(SimulatedLaptop& laptop) : m_laptop(laptop)
{
    beginAnew();
}

void SimulatedDay::beginAnew()
{
    m_steps = 0;
    m_laptop.setPercent(kMorningPercent);
    m_laptop.unplug();
    m_laptop.setLoad(kScenes.front().loadWatts);
}

void SimulatedDay::advanceTo(double realSeconds)
{
    const auto steps = static_cast<std::int64_t>(std::floor(std::max(realSeconds, 0.0) * kStepsPerSecond));
    if (steps < m_steps)
        beginAnew();
    while (m_steps < steps)
        takeStep();
}

void SimulatedDay::takeStep()
{
    const double second = std::fmod(static_cast<double>(m_steps) / kStepsPerSecond, kLengthSeconds);
    const Scene& scene = sceneAt(second);
    if (scene.adapterWatts > 0)
        m_laptop.plugIn(AdapterWatts{scene.adapterWatts});
    else
        m_laptop.unplug();

    // A wandering load, scaled to the scene, at a pace that shows within its few seconds.
    constexpr double kPace = 4.0;
    constexpr double kRange = WanderingLoad::kHighestOrdinaryWatts - WanderingLoad::kLowestWatts;
    const double variation
        = (m_variation.ordinaryWattsAt(second * kPace) - WanderingLoad::kLowestWatts) / kRange;
    m_laptop.setLoad(scene.loadWatts * (0.9 + 0.5 * variation));

    m_laptop.advance(scene.speed / kStepsPerSecond);
    ++m_steps;
}

} // namespace amperly
