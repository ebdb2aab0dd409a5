#include "telemetry/live_model.h"

#include "tests/support/allocation_count.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(LiveModelMemoryTest, ThoseWhoLeftTakeNone)
{
    LiveModel live;
    const auto comeAndGo = [&live] {
        static_cast<void>(live.objectWillChange([] {}));
        live.setSample(std::nullopt);
    };
    comeAndGo();
    const AllocationCount count;
    for (int round = 0; round < 100; ++round)
        comeAndGo();
    EXPECT_EQ(count.value(), 100) << "for the subscriptions, and not for a longer list of them";
}

} // namespace
} // namespace amperly
