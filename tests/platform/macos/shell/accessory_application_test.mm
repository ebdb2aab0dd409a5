#include "platform/macos/shell/accessory_application.h"

#include "tests/platform/macos/fakes/fake_desktop_test.h"

#include <cstdlib>

namespace amperly {
namespace {

class AccessoryApplicationTest : public FakeDesktopTest {
protected:
    AccessoryApplication application;
};

TEST_F(AccessoryApplicationTest, ThereIsNoDockIconAndNoMainMenu)
{
    EXPECT_EQ(stage.application.policy, NSApplicationActivationPolicyAccessory);
}

TEST_F(AccessoryApplicationTest, TheToolkitIsToldToLeaveItThatWay)
{
    EXPECT_STREQ(std::getenv("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM"), "1");
}

TEST_F(AccessoryApplicationTest, OpeningItAgainIsHandledHere)
{
    int reopenings = 0;
    application.onReopen([&] { ++reopenings; });
    EXPECT_FALSE(fake_mac::reopenApplication());
    EXPECT_EQ(reopenings, 1);
}

TEST_F(AccessoryApplicationTest, OpeningItAgainBeforeAnybodyListensDoesNothing)
{
    EXPECT_FALSE(fake_mac::reopenApplication());
}

TEST(AccessoryApplicationEndTest, ItsDelegateGoesWithIt)
{
    fake_mac::resetStage();
    int reopenings = 0;
    {
        AccessoryApplication application;
        application.onReopen([&] { ++reopenings; });
    }
    EXPECT_FALSE(fake_mac::reopenApplication());
    EXPECT_EQ(reopenings, 0);
}

} // namespace
} // namespace amperly
