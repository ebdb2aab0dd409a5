#include "flow/glass/gaussian_weights.h"

namespace amperly::glass {

namespace {

constexpr double kLeastVariance = 1e-6;
constexpr double kLeastWeight = 0.0005; // a tenth of a step of a channel, for what glows here

} // namespace

GaussianWeights::GaussianWeights(double variance)
{
    m_weights[0] = 1.0F;
    if (variance < kLeastVariance)
        return;

    // Miller's algorithm: the recurrence is run backwards from far out, where any value may be assumed;
    // towards the middle the proportions become right whatever was assumed.
    constexpr std::size_t kStart = 2 * kMostReach;
    std::array<double, kStart + 2> values{};
    values[kStart] = 1e-280;
    for (std::size_t n = kStart; n > 0; --n) {
        values[n - 1] = values[n + 1] + 2.0 * static_cast<double>(n) / variance * values[n];
        if (values[n - 1] > 1e200) { // the far ones are then next to nothing
            for (double& value : values)
                value *= 1e-280;
        }
    }
    double sum = values[0];
    for (std::size_t n = 1; n < values.size(); ++n)
        sum += 2.0 * values[n];

    while (m_reach < kMostReach && values[m_reach + 1] / sum > kLeastWeight)
        ++m_reach;
    double kept = values[0];
    for (std::size_t n = 1; n <= m_reach; ++n)
        kept += 2.0 * values[n];
    for (std::size_t n = 0; n <= m_reach; ++n)
        m_weights[n] = static_cast<float>(values[n] / kept);
}

} // namespace amperly::glass
