#include "flow/glass/gaussian_weights.h"

#include <cmath>

#include <gtest/gtest.h>

namespace amperly::glass {
namespace {

struct Moments {
    double sum = 0.0;
    double variance = 0.0;
};

Moments momentsOf(const GaussianWeights& weights)
{
    Moments moments{.sum = static_cast<double>(weights[0])};
    for (std::size_t distance = 1; distance <= weights.reach(); ++distance) {
        const auto weight = 2.0 * static_cast<double>(weights[distance]);
        moments.sum += weight;
        moments.variance += weight * static_cast<double>(distance * distance);
    }
    return moments;
}

TEST(GaussianWeightsTest, NoVarianceIsNoBlur)
{
    const GaussianWeights weights(0.0);
    EXPECT_EQ(weights.reach(), 0U);
    EXPECT_EQ(weights[0], 1.0F);
}

TEST(GaussianWeightsTest, HaveTheVarianceThatIsAskedForHoweverSmall)
{
    for (const double variance : {0.05, 0.18, 0.5, 1.0, 2.7, 6.0, 20.0}) {
        const Moments moments = momentsOf(GaussianWeights(variance));
        EXPECT_NEAR(moments.sum, 1.0, 1e-5) << variance;
        EXPECT_NEAR(moments.variance, variance, 0.02 * variance + 0.003) << variance;
    }
}

TEST(GaussianWeightsTest, AreAGaussianWhereTheyAreWide)
{
    constexpr double kVariance = 9.0;
    const GaussianWeights weights(kVariance);
    for (std::size_t distance = 0; distance <= 6; ++distance) {
        const double there = static_cast<double>(distance);
        const double density
            = std::exp(-0.5 * there * there / kVariance) / std::sqrt(2.0 * 3.14159265 * kVariance);
        EXPECT_NEAR(static_cast<double>(weights[distance]), density, 0.003);
    }
}

TEST(GaussianWeightsTest, EndWhereTheyNoLongerMatter)
{
    EXPECT_LE(GaussianWeights(1e-4).reach(), 1U);
    EXPECT_LE(GaussianWeights(1.0).reach(), 5U);
    EXPECT_EQ(GaussianWeights(1e4).reach(), GaussianWeights::kMostReach);
}

} // namespace
} // namespace amperly::glass
