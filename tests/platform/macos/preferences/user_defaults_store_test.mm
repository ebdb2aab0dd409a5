#include "platform/macos/preferences/user_defaults_store.h"

#include "tests/platform/macos/fakes/fake_desktop_test.h"
#include "tests/platform/preference_store_contract.h"

namespace amperly {
namespace {

struct UserDefaultsMaker {
    UserDefaultsMaker() { fake_mac::resetStage(); }
    PreferenceStore& make() { return store.emplace(NSUserDefaults.standardUserDefaults); }
    std::optional<UserDefaultsStore> store;
};

INSTANTIATE_TYPED_TEST_SUITE_P(UserDefaults, PreferenceStoreContract, UserDefaultsMaker);

class UserDefaultsStoreTest : public FakeDesktopTest {
protected:
    UserDefaultsStoreTest()
    {
        store.emplace(NSUserDefaults.standardUserDefaults);
        subscription = store->onDidChange([this] { ++announcements; });
    }

    void TearDown() override
    {
        store.reset();
        FakeDesktopTest::TearDown();
    }

    std::optional<UserDefaultsStore> store;
    Subscription subscription;
    int announcements = 0;
};

TEST_F(UserDefaultsStoreTest, ValuesAreStoredWithTheirType)
{
    store->set("macIcon", std::string("cpu"));
    store->set("decimals", std::int64_t{1});
    store->set("smoothing", true);
    store->set("updateInterval", 2.0);
    EXPECT_EQ(fake_mac::storedValue("macIcon"), fake_mac::Stored(std::string("cpu")));
    EXPECT_EQ(fake_mac::storedValue("decimals"), fake_mac::Stored(1LL));
    EXPECT_EQ(fake_mac::storedValue("smoothing"), fake_mac::Stored(true));
    EXPECT_EQ(fake_mac::storedValue("updateInterval"), fake_mac::Stored(2.0));
}

TEST_F(UserDefaultsStoreTest, TypesComeBackAsTheyWereStored)
{
    store->set("smoothing", true);
    store->set("decimals", std::int64_t{1});
    store->set("updateInterval", 2.5);
    EXPECT_EQ(store->text("smoothing"), "1");
    EXPECT_EQ(store->text("decimals"), "1");
    EXPECT_EQ(store->text("updateInterval"), "2.5");
}

TEST_F(UserDefaultsStoreTest, RegisteredValuesAreNeverStored)
{
    store->registerDefaults({{"updateInterval", 2.0}});
    EXPECT_EQ(store->real("updateInterval"), 2.0);
    EXPECT_EQ(fake_mac::storedValue("updateInterval"), fake_mac::Stored());
}

TEST_F(UserDefaultsStoreTest, RemovingTakesTheValueOutOfTheStore)
{
    store->set("decimals", std::int64_t{0});
    store->remove("decimals");
    EXPECT_EQ(fake_mac::storedValue("decimals"), fake_mac::Stored());
}

TEST_F(UserDefaultsStoreTest, AnObjectThatIsNoPreferenceReadsAsNothing)
{
    fake_mac::storeSomethingElse("macIcon");
    EXPECT_EQ(store->text("macIcon"), std::nullopt);
    EXPECT_EQ(store->integer("macIcon"), 0);
    EXPECT_FALSE(store->boolean("macIcon"));
    EXPECT_EQ(store->real("macIcon"), 0.0);
}

TEST_F(UserDefaultsStoreTest, AnotherProcesssChangeIsAnnouncedOnTheMainThread)
{
    store->registerDefaults({{"updateInterval", 2.0}});
    fake_mac::writeFromElsewhere("updateInterval", 5.0);
    EXPECT_EQ(announcements, 0);
    fake_mac::runMainQueue();
    EXPECT_EQ(announcements, 1);
    EXPECT_EQ(store->real("updateInterval"), 5.0);
}

TEST_F(UserDefaultsStoreTest, AnotherProcesssRemovalIsAnnounced)
{
    store->registerDefaults({{"updateInterval", 2.0}});
    store->set("updateInterval", 5.0);
    announcements = 0;
    fake_mac::writeFromElsewhere("updateInterval", {});
    fake_mac::runMainQueue();
    EXPECT_EQ(announcements, 1);
    EXPECT_EQ(store->real("updateInterval"), 2.0);
}

TEST_F(UserDefaultsStoreTest, AChangeThatOnlyTheNotificationTellsOfIsAnnounced)
{
    store->registerDefaults({{"showUnit", true}});
    fake_mac::changeQuietly("showUnit", false);
    EXPECT_EQ(announcements, 1);
}

TEST_F(UserDefaultsStoreTest, AnotherThreadsChangeIsAnnouncedOnceOnTheMainThread)
{
    store->registerDefaults({{"showUnit", true}});
    fake_mac::writeFromOtherThread("showUnit", false);
    EXPECT_EQ(announcements, 0);
    fake_mac::runMainQueue();
    EXPECT_EQ(announcements, 1);
}

TEST_F(UserDefaultsStoreTest, SeveralChangesOnTheirWayAreAnnouncedTogether)
{
    store->registerDefaults({{"showUnit", true}, {"decimals", std::int64_t{1}}});
    fake_mac::writeFromElsewhere("showUnit", false);
    fake_mac::writeFromElsewhere("decimals", 0LL);
    fake_mac::runMainQueue();
    EXPECT_EQ(announcements, 1);
}

TEST_F(UserDefaultsStoreTest, AStoreThatIsGoneHearsNothingAnyMore)
{
    store->registerDefaults({{"showUnit", true}});
    fake_mac::writeFromElsewhere("showUnit", false);
    store.reset();
    fake_mac::runMainQueue();
    EXPECT_EQ(announcements, 0);
}

} // namespace
} // namespace amperly
