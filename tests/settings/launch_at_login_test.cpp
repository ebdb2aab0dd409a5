#include "settings/launch_at_login.h"

#include "platform/simulated/desktop/fake_login_item.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace amperly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LaunchAtLoginTest : public testing::Test {
protected:
    FakeLoginItem item;
    std::vector<std::string> alerts;
    LaunchAtLogin launch{item, [this](const std::string& failure) { alerts.push_back(failure); }};
};

TEST_F(LaunchAtLoginTest, ItIsOnExactlyWhileTheDesktopSaysEnabled)
{
    for (const LoginItemStatus status : {LoginItemStatus::NotRegistered, LoginItemStatus::Enabled,
             LoginItemStatus::RequiresApproval, LoginItemStatus::NotFound}) {
        item.setStatus(status);
        launch.readAgain();
        EXPECT_EQ(launch.isOn(), status == LoginItemStatus::Enabled);
        EXPECT_EQ(launch.needsApproval(), status == LoginItemStatus::RequiresApproval);
    }
}

TEST_F(LaunchAtLoginTest, OnRegistersAndOffUnregisters)
{
    launch.set(true);
    EXPECT_TRUE(launch.isOn());
    EXPECT_EQ(item.registrations(), 1);
    launch.set(false);
    EXPECT_FALSE(launch.isOn());
    EXPECT_EQ(item.unregistrations(), 1);
    EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(LaunchAtLoginTest, WhatNeedsApprovalStaysOff)
{
    item.requireApproval();
    launch.set(true);
    EXPECT_FALSE(launch.isOn());
    EXPECT_TRUE(launch.needsApproval());
    EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(LaunchAtLoginTest, AFailureIsShownAndTheStatusIsWhatTheDesktopSays)
{
    item.failWith("The disk is full");
    launch.set(true);
    EXPECT_THAT(alerts, ElementsAre("The disk is full"));
    EXPECT_FALSE(launch.isOn());

    item.setStatus(LoginItemStatus::Enabled);
    launch.set(false);
    EXPECT_TRUE(launch.isOn()) << "switching it off failed";
    EXPECT_EQ(alerts.size(), 2U);
}

} // namespace
} // namespace amperly
