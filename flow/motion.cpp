#include "flow/motion.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace amperly {

namespace {

/// Of the distance: half a pixel of a thousand.
constexpr double kLeftOver = 0.0005;

/// One coordinate of the cubic from 0 to 1 with the given inner points.
double cubic(double first, double second, double t)
{
    const double rest = 1.0 - t;
    return 3.0 * rest * rest * t * first + 3.0 * rest * t * t * second + t * t * t;
}

double cubicSlope(double first, double second, double t)
{
    const double rest = 1.0 - t;
    return 3.0 * rest * rest * first + 6.0 * rest * t * (second - first) + 3.0 * t * t * (1.0 - second);
}

} // namespace

double Spring::at(double elapsed) const
{
    if (!(elapsed > 0.0))
        return 0.0;
    if (elapsed >= settlingSeconds())
        return 1.0;
    const double frequency = 2.0 * std::numbers::pi / response;
    const double damped = frequency * std::sqrt(1.0 - damping * damping);
    const double decay = damping * frequency;
    return 1.0
        - std::exp(-decay * elapsed)
        * (std::cos(damped * elapsed) + decay / damped * std::sin(damped * elapsed));
}

double Spring::settlingSeconds() const
{
    const double decay = damping * 2.0 * std::numbers::pi / response;
    return -std::log(kLeftOver * std::sqrt(1.0 - damping * damping)) / decay;
}

double easeInOut(double fraction)
{
    constexpr double kFirst = 0.42; // the inner points in time; in distance they are 0 and 1
    constexpr double kSecond = 0.58;
    constexpr int kSteps = 6; // Newton's; the slope is never near 0, so these are plenty

    const double time = std::clamp(fraction, 0.0, 1.0);
    double t = time;
    for (int step = 0; step < kSteps; ++step)
        t -= (cubic(kFirst, kSecond, t) - time) / cubicSlope(kFirst, kSecond, t);
    return cubic(0.0, 1.0, std::clamp(t, 0.0, 1.0));
}

double breathe(double elapsed, double seconds)
{
    const double phase = std::fmod(std::max(elapsed, 0.0), 2.0 * seconds) / seconds;
    return easeInOut(phase <= 1.0 ? phase : 2.0 - phase);
}

} // namespace amperly
