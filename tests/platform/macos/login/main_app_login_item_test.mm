#include "platform/macos/login/main_app_login_item.h"

#include "tests/platform/macos/fakes/fake_desktop_test.h"

namespace amperly {
namespace {

class MainAppLoginItemTest : public FakeDesktopTest {
protected:
    MainAppLoginItem item;
};

TEST_F(MainAppLoginItemTest, EveryStateOfTheServiceIsToldApart)
{
    const auto statusFor = [this](long serviceStatus) {
        stage.system.loginStatus = serviceStatus;
        return item.status();
    };
    EXPECT_EQ(statusFor(0), LoginItemStatus::NotRegistered);
    EXPECT_EQ(statusFor(1), LoginItemStatus::Enabled);
    EXPECT_EQ(statusFor(2), LoginItemStatus::RequiresApproval);
    EXPECT_EQ(statusFor(3), LoginItemStatus::NotFound);
}

TEST_F(MainAppLoginItemTest, AStateThatIsNotKnownYetCountsAsNotFound)
{
    stage.system.loginStatus = 4;
    EXPECT_EQ(item.status(), LoginItemStatus::NotFound);
}

TEST_F(MainAppLoginItemTest, RegisteringAndUnregisteringSwitchTheService)
{
    EXPECT_EQ(item.registerItem(), std::nullopt);
    EXPECT_EQ(item.status(), LoginItemStatus::Enabled);
    EXPECT_EQ(item.unregisterItem(), std::nullopt);
    EXPECT_EQ(item.status(), LoginItemStatus::NotRegistered);
}

TEST_F(MainAppLoginItemTest, AFailureTellsWhatTheSystemSays)
{
    stage.system.loginFailure = "Operation not permitted";
    EXPECT_EQ(item.registerItem(), "Operation not permitted");
    EXPECT_EQ(item.unregisterItem(), "Operation not permitted");
}

TEST_F(MainAppLoginItemTest, TheSystemsOwnListCanBeOpened)
{
    item.openSystemSettings();
    EXPECT_EQ(stage.system.loginSettingsOpened, 1);
}

} // namespace
} // namespace amperly
