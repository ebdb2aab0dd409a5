#include "platform/linux/tray/status_notifier_watcher.h"

#include "tests/platform/linux/tray/fake_panel.h"
#include "tests/support/private_bus.h"
#include "tests/support/run_until.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace amperly {
namespace {

using Presence = StatusNotifierWatcher::Presence;

class StatusNotifierWatcherTest : public testing::Test {
protected:
    StatusNotifierWatcherTest()
    {
        watcher.onChanged([this] { ++changes; });
    }

    [[nodiscard]] bool becomes(Presence presence)
    {
        return runUntil([&] { return watcher.presence() == presence; });
    }

    PrivateBus daemon;
    std::unique_ptr<BusConnection> connection = BusConnection::open(daemon.address());
    StatusNotifierWatcher watcher{*connection, [](std::uint32_t process) { return std::to_string(process); }};
    int changes = 0;
};

TEST_F(StatusNotifierWatcherTest, WhereThereIsNoneItIsAbsent)
{
    EXPECT_EQ(watcher.presence(), Presence::Unknown);
    ASSERT_TRUE(becomes(Presence::Absent));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(watcher.owner(), "");
    EXPECT_EQ(watcher.process(), "");
}

TEST_F(StatusNotifierWatcherTest, IsKnownByItsConnectionAndItsProcess)
{
    test::FakePanel panel(daemon.address());
    ASSERT_TRUE(becomes(Presence::WithHost));
    EXPECT_EQ(watcher.owner(), panel.address());
    EXPECT_EQ(watcher.process(), std::to_string(getpid()));
}

TEST_F(StatusNotifierWatcherTest, OneThatLeavesIsForgotten)
{
    test::FakePanel panel(daemon.address());
    ASSERT_TRUE(becomes(Presence::WithHost));
    changes = 0;
    panel.stopWatching();
    ASSERT_TRUE(becomes(Presence::Absent));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(watcher.owner(), "");
    EXPECT_EQ(watcher.process(), "");
}

TEST_F(StatusNotifierWatcherTest, OneThatComesBackIsFoundAgain)
{
    test::FakePanel panel(daemon.address());
    ASSERT_TRUE(becomes(Presence::WithHost));
    panel.stopWatching();
    ASSERT_TRUE(becomes(Presence::Absent));
    panel.watchAgain();
    ASSERT_TRUE(becomes(Presence::WithHost));
    EXPECT_EQ(watcher.owner(), panel.address());
}

TEST_F(StatusNotifierWatcherTest, HostsAreFollowed)
{
    test::FakePanel panel(daemon.address(), false);
    ASSERT_TRUE(becomes(Presence::WithoutHost));
    panel.setHasHost(true);
    ASSERT_TRUE(becomes(Presence::WithHost));
    panel.setHasHost(false);
    ASSERT_TRUE(becomes(Presence::WithoutHost));
}

TEST_F(StatusNotifierWatcherTest, WatcherThatDoesNotSayWhetherItHasAHostIsOneItself)
{
    test::FakePanel panel(daemon.address(), std::nullopt);
    EXPECT_TRUE(becomes(Presence::WithHost));
}

} // namespace
} // namespace amperly
