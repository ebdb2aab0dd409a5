#include "platform/linux/desktop/color_scheme.h"

#include "platform/linux/tray/desktop_ink.h"
#include "tests/support/allocation_count.h"
#include "tests/support/private_bus.h"
#include "tests/support/run_until.h"

namespace amperly {
namespace {

/// The settings portal, as far as it knows about colour schemes.
class FakePortal {
public:
    FakePortal(const std::string& address, std::uint32_t scheme)
        : m_connection(BusConnection::open(address)), m_scheme(scheme)
    {
        sd_bus_slot* slot = nullptr;
        sd_bus_add_object_vtable(m_connection->bus(), &slot, kPath, kInterface, kSettings, this);
        m_object.reset(slot);
        EXPECT_GE(sd_bus_request_name(m_connection->bus(), "org.freedesktop.portal.Desktop", 0), 0);
        m_connection->settle();
    }

    void become(std::uint32_t scheme)
    {
        m_scheme = scheme;
        sd_bus_emit_signal(m_connection->bus(), kPath, kInterface, "SettingChanged", "ssv",
            "org.freedesktop.appearance", "color-scheme", "u", scheme);
        m_connection->settle();
    }

    [[nodiscard]] int questions() const { return m_questions; }

private:
    static constexpr const char* kPath = "/org/freedesktop/portal/desktop";
    static constexpr const char* kInterface = "org.freedesktop.portal.Settings";
    static const sd_bus_vtable kSettings[];

    static int read(sd_bus_message* call, void* self, sd_bus_error*)
    {
        auto& portal = *static_cast<FakePortal*>(self);
        ++portal.m_questions;
        const char* group = "";
        const char* key = "";
        sd_bus_message_read(call, "ss", &group, &key);
        EXPECT_STREQ(group, "org.freedesktop.appearance");
        EXPECT_STREQ(key, "color-scheme");
        return sd_bus_reply_method_return(call, "v", "v", "u", portal.m_scheme);
    }

    std::unique_ptr<BusConnection> m_connection;
    std::uint32_t m_scheme;
    int m_questions = 0;
    BusSlot m_object;
};

const sd_bus_vtable FakePortal::kSettings[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Read", "ss", "v", read, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_SIGNAL("SettingChanged", "ssv", 0),
    SD_BUS_VTABLE_END,
};

class ColorSchemeTest : public testing::Test {
protected:
    PrivateBus daemon;
    std::unique_ptr<BusConnection> connection = BusConnection::open(daemon.address());
};

TEST_F(ColorSchemeTest, PortalsAnswerIsTheScheme)
{
    const FakePortal portal(daemon.address(), 1);
    const ColorScheme scheme(*connection);
    EXPECT_EQ(scheme.prefersDark(), std::nullopt);
    EXPECT_TRUE(runUntil([&] { return scheme.prefersDark() == true; }));
}

TEST_F(ColorSchemeTest, PortalWithoutAPreferenceLeavesItOpen)
{
    const FakePortal portal(daemon.address(), 0);
    ColorScheme scheme(*connection);
    bool changed = false;
    scheme.onChanged([&] { changed = true; });
    ASSERT_TRUE(runUntil([&] { return portal.questions() == 1; }));
    EXPECT_EQ(scheme.prefersDark(), std::nullopt);
    EXPECT_FALSE(changed);
}

TEST_F(ColorSchemeTest, ChangeOfTheSettingIsFollowed)
{
    FakePortal portal(daemon.address(), 1);
    ColorScheme scheme(*connection);
    ASSERT_TRUE(runUntil([&] { return scheme.prefersDark() == true; }));
    int changes = 0;
    scheme.onChanged([&] { ++changes; });
    portal.become(2);
    EXPECT_TRUE(runUntil([&] { return scheme.prefersDark() == false; }));
    EXPECT_EQ(changes, 1);
}

TEST_F(ColorSchemeTest, PortalThatComesLaterIsAskedAtTheNextRefresh)
{
    ColorScheme scheme(*connection);
    const FakePortal portal(daemon.address(), 2);
    scheme.refresh();
    EXPECT_TRUE(runUntil([&] { return scheme.prefersDark() == false; }));
}

TEST_F(ColorSchemeTest, InkFollowsThePortal)
{
    FakePortal portal(daemon.address(), 1);
    DesktopInk ink(connection.get());
    EXPECT_TRUE(runUntil([&] { return ink.ink(PanelInk::ColorScheme) == kWhiteInk; }));
    bool told = false;
    ink.onChanged([&] { told = true; });
    portal.become(2);
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
