#include "platform/linux/desktop/color_scheme.h"

#include "platform/linux/tray/desktop_ink.h"
#include "tests/platform/linux/desktop/fake_portal.h"
#include "tests/support/allocation_count.h"
#include "tests/support/private_bus.h"
#include "tests/support/run_until.h"

namespace amperly {
namespace {

class ColorSchemeTest : public testing::Test {
protected:
    /// The portal comes, or has another scheme.
    void prefer(std::uint32_t scheme)
    {
        if (!portal)
            portal.emplace(daemon.address());
        portal->set("org.freedesktop.appearance", "color-scheme", "u", scheme);
    }

    PrivateBus daemon;
    std::optional<FakePortal> portal;
    std::unique_ptr<BusConnection> connection = BusConnection::open(daemon.address());
};

TEST_F(ColorSchemeTest, PortalsAnswerIsTheScheme)
{
    prefer(1);
    const ColorScheme scheme(*connection);
    EXPECT_EQ(scheme.prefersDark(), std::nullopt);
    EXPECT_TRUE(runUntil([&] { return scheme.prefersDark() == true; }));
}

TEST_F(ColorSchemeTest, PortalWithoutAPreferenceLeavesItOpen)
{
    prefer(0);
    ColorScheme scheme(*connection);
    bool changed = false;
    scheme.onChanged([&] { changed = true; });
    ASSERT_TRUE(runUntil([&] { return portal->questions() == 1; }));
    EXPECT_EQ(scheme.prefersDark(), std::nullopt);
    EXPECT_FALSE(changed);
}

TEST_F(ColorSchemeTest, ChangeOfTheSettingIsFollowed)
{
    prefer(1);
    ColorScheme scheme(*connection);
    ASSERT_TRUE(runUntil([&] { return scheme.prefersDark() == true; }));
    int changes = 0;
    scheme.onChanged([&] { ++changes; });
    prefer(2);
    EXPECT_TRUE(runUntil([&] { return scheme.prefersDark() == false; }));
    EXPECT_EQ(changes, 1);
}

TEST_F(ColorSchemeTest, PortalThatComesLaterIsAskedAtTheNextRefresh)
{
    ColorScheme scheme(*connection);
    prefer(2);
    scheme.refresh();
    EXPECT_TRUE(runUntil([&] { return scheme.prefersDark() == false; }));
}

TEST_F(ColorSchemeTest, InkFollowsThePortal)
{
    prefer(1);
    DesktopInk ink(connection.get());
    EXPECT_TRUE(runUntil([&] { return ink.ink(PanelInk::ColorScheme) == kWhiteInk; }));
    bool told = false;
    ink.onChanged([&] { told = true; });
    prefer(2);
    EXPECT_TRUE(runUntil([&] { return told; }));
    EXPECT_EQ(ink.ink(PanelInk::ColorScheme), kBlackInk);
}

TEST(DesktopInkTest, AskingForTheInkTakesNoMemory)
{
    const DesktopInk ink(nullptr);
    static_cast<void>(ink.ink(PanelInk::Palette));
    const AllocationCount count;
    EXPECT_EQ(ink.ink(PanelInk::White), kWhiteInk);
    static_cast<void>(ink.ink(PanelInk::Palette));
    EXPECT_EQ(count.value(), 0);
}

} // namespace
} // namespace amperly
