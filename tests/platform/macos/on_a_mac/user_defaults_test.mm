#include "platform/macos/preferences/user_defaults_store.h"

#include "tests/platform/macos/on_a_mac/run_loop.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

NSString* const kSuite = @"io.github.amperly.Amperly.tests";

/// Over preferences of its own, which nobody else has and which go with the test.
class UserDefaultsOnAMacTest : public testing::Test {
protected:
    UserDefaultsOnAMacTest() : defaults([[NSUserDefaults alloc] initWithSuiteName:kSuite])
    {
        [defaults removePersistentDomainForName:kSuite];
        store = std::make_unique<UserDefaultsStore>(defaults);
        subscription = store->onDidChange([this] { ++announcements; });
    }

    ~UserDefaultsOnAMacTest() override
    {
        store.reset();
        [defaults removePersistentDomainForName:kSuite];
    }

    NSUserDefaults* defaults;
    std::unique_ptr<UserDefaultsStore> store;
    Subscription subscription;
    int announcements = 0;
};

TEST_F(UserDefaultsOnAMacTest, TypesComeBackAsTheyWereStored)
{
    store->set("smoothing", true);
    store->set("decimals", std::int64_t{1});
    store->set("updateInterval", 2.5);
    store->set("macIcon", std::string("cpu"));
    EXPECT_TRUE(store->boolean("smoothing"));
    EXPECT_EQ(store->integer("decimals"), 1);
    EXPECT_EQ(store->real("updateInterval"), 2.5);
    EXPECT_EQ(store->text("macIcon"), "cpu");
    EXPECT_EQ(store->text("updateInterval"), "2.5");
}

TEST_F(UserDefaultsOnAMacTest, WhatIsRemovedReadsAsItsDefault)
{
    store->registerDefaults({{"amperlyTestInterval", 2.0}});
    store->set("amperlyTestInterval", 5.0);
    store->remove("amperlyTestInterval");
    EXPECT_EQ(store->real("amperlyTestInterval"), 2.0);
}

TEST_F(UserDefaultsOnAMacTest, AChangeIsAnnounced)
{
    store->registerDefaults({{"amperlyTestUnit", true}});
    announcements = 0;
    store->set("amperlyTestUnit", false);
    EXPECT_TRUE(runUntil([this] { return announcements > 0; }));
    EXPECT_FALSE(store->boolean("amperlyTestUnit"));
}

} // namespace
} // namespace amperly
