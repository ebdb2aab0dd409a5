#include "telemetry/live_model.h"

#include "tests/support/print_sample.h"

#include <gtest/gtest.h>
#include <utility>

namespace amperly {
namespace {

const PowerSample kSample{.systemLoad = 10};

TEST(LiveModelTest, StartsWithoutASample)
{
    EXPECT_EQ(LiveModel().sample(), std::nullopt);
}

TEST(LiveModelTest, AnnouncesBeforeTheValueChanges)
{
    LiveModel live;
    std::optional<PowerSample> seen = PowerSample{.systemLoad = 99};
    const auto subscription = live.objectWillChange([&] { seen = live.sample(); });
    live.setSample(kSample);
    EXPECT_EQ(seen, std::nullopt);
    EXPECT_EQ(live.sample(), kSample);
}

TEST(LiveModelTest, AnnouncesTheSameValueAgain)
{
    LiveModel live;
    int announcements = 0;
    const auto subscription = live.objectWillChange([&] { ++announcements; });
    live.setSample(kSample);
    live.setSample(kSample);
    EXPECT_EQ(announcements, 2);
}

TEST(LiveModelTest, AHandlerMaySetASampleThoughOthersHaveLeft)
{
    LiveModel live;
    int heard = 0;
    bool nested = false;
    Subscription leaving = live.objectWillChange([] {});
    const auto setting = live.objectWillChange([&] {
        if (std::exchange(nested, true))
            return;
        leaving = {};
        live.setSample(std::nullopt);
    });
    const auto last = live.objectWillChange([&] { ++heard; });
    live.setSample(kSample);
    EXPECT_EQ(heard, 2) << "once of each change";
    EXPECT_EQ(live.sample(), kSample);
}

} // namespace
} // namespace amperly
