#include "flow/glass/flow_color.h"

#include <gtest/gtest.h>

namespace amperly::glass {
namespace {

TEST(FlowColorTest, MixingMovesEachComponentTowardsWhite)
{
    constexpr Color kMixed = FlowColor::charging.mix(0.45);
    EXPECT_NEAR(kMixed.red, 0.615, 1e-12);
    EXPECT_NEAR(kMixed.green, 0.791, 1e-12);
    EXPECT_NEAR(kMixed.blue, 1.0, 1e-12);
}

TEST(FlowColorTest, NothingMixedInChangesNothingAndAllOfItIsWhite)
{
    EXPECT_EQ(FlowColor::draining.mix(0.0), FlowColor::draining);
    EXPECT_EQ(FlowColor::draining.mix(1.0), (Color{1.0, 1.0, 1.0}));
}

} // namespace
} // namespace amperly::glass
