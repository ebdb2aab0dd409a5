#include "platform/subscription.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace amperly {
namespace {

TEST(SubscriptionTest, EveryoneHearsUntilTheirSubscriptionEnds)
{
    Subscribers<> subscribers;
    int first = 0;
    int second = 0;
    const auto lasting = subscribers.add([&] { ++first; });
    {
        const auto passing = subscribers.add([&] { ++second; });
        subscribers.announce();
    }
    subscribers.announce();
    EXPECT_EQ(first, 2);
    EXPECT_EQ(second, 1);
}

TEST(SubscriptionTest, ASubscriptionMayEndItselfAndOthersDuringAnAnnouncement)
{
    Subscribers<> subscribers;
    int heard = 0;
    Subscription own;
    Subscription other;
    own = subscribers.add([&] {
        ++heard;
        own = {};
        other = {};
    });
    other = subscribers.add([&] { ++heard; });
    subscribers.announce();
    subscribers.announce();
    EXPECT_EQ(heard, 1);
}

TEST(SubscriptionTest, WhoSubscribesDuringAnAnnouncementHearsOfTheNext)
{
    Subscribers<> subscribers;
    int late = 0;
    bool subscribed = false;
    Subscription second;
    const auto first = subscribers.add([&] {
        if (!std::exchange(subscribed, true))
            second = subscribers.add([&] { ++late; });
    });
    subscribers.announce();
    EXPECT_EQ(late, 0);
    subscribers.announce();
    EXPECT_EQ(late, 1);
}

TEST(SubscriptionTest, ASubscriptionMayOutliveWhatItIsSubscribedTo)
{
    auto subscribers = std::make_unique<Subscribers<>>();
    const auto held = std::make_shared<int>();
    auto subscription = subscribers->add([held] {});
    subscribers.reset();
    subscription = {};
    EXPECT_EQ(held.use_count(), 1) << "the handler is let go with its subscription";
}

TEST(SubscriptionTest, HandlersAreGivenWhatIsAnnouncedInTheOrderOfTheirSubscriptions)
{
    Subscribers<int> subscribers;
    std::vector<int> heard;
    const auto first = subscribers.add([&](int number) { heard.push_back(number); });
    const auto second = subscribers.add([&](int number) { heard.push_back(10 * number); });
    subscribers.announce(1);
    subscribers.announce(2);
    EXPECT_THAT(heard, testing::ElementsAre(1, 10, 2, 20));
}

TEST(SubscriptionTest, ANewSubscriptionInThePlaceOfAnotherEndsThatOne)
{
    Subscribers<> subscribers;
    int first = 0;
    int second = 0;
    Subscription subscription = subscribers.add([&] { ++first; });
    subscription = subscribers.add([&] { ++second; });
    subscribers.announce();
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
}

} // namespace
} // namespace amperly
