#include "telemetry/live_model.h"

#include "tests/support/print_sample.h"

#include <gtest/gtest.h>
#include <memory>
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

TEST(LiveModelTest, AnnouncesToEveryoneUntilTheirSubscriptionEnds)
{
    LiveModel live;
    int first = 0;
    int second = 0;
    const auto lasting = live.objectWillChange([&] { ++first; });
    {
        const auto passing = live.objectWillChange([&] { ++second; });
        live.setSample(kSample);
    }
    live.setSample(std::nullopt);
    EXPECT_EQ(first, 2);
    EXPECT_EQ(second, 1);
}

TEST(LiveModelTest, ASubscriptionMayEndItselfAndOthersWhileTheChangeIsAnnounced)
{
    LiveModel live;
    int heard = 0;
    LiveModel::Subscription own;
    LiveModel::Subscription other;
    own = live.objectWillChange([&] {
        ++heard;
        own = {};
        other = {};
    });
    other = live.objectWillChange([&] { ++heard; });
    live.setSample(kSample);
    live.setSample(kSample);
    EXPECT_EQ(heard, 1);
}

TEST(LiveModelTest, WhoSubscribesDuringAnAnnouncementHearsOfTheNext)
{
    LiveModel live;
    int late = 0;
    bool subscribed = false;
    LiveModel::Subscription second;
    const auto first = live.objectWillChange([&] {
        if (!std::exchange(subscribed, true))
            second = live.objectWillChange([&] { ++late; });
    });
    live.setSample(kSample);
    EXPECT_EQ(late, 0);
    live.setSample(kSample);
    EXPECT_EQ(late, 1);
}

TEST(LiveModelTest, AHandlerMaySetASampleThoughOthersHaveLeft)
{
    LiveModel live;
    int heard = 0;
    bool nested = false;
    LiveModel::Subscription leaving = live.objectWillChange([] {});
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

TEST(LiveModelTest, ASubscriptionMayOutliveTheModel)
{
    auto live = std::make_unique<LiveModel>();
    const auto held = std::make_shared<int>();
    auto subscription = live->objectWillChange([held] {});
    live.reset();
    subscription = {};
    EXPECT_EQ(held.use_count(), 1) << "the handler is let go with its subscription";
}

} // namespace
} // namespace amperly
