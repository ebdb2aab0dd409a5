#include "platform/linux/desktop/desktop_motion.h"

#include "tests/support/private_bus.h"
#include "tests/support/run_until.h"
#include "tests/support/temporary_folder.h"

namespace amperly {
namespace {

/// The settings portal, as far as it knows about animations.
class FakePortal {
public:
    FakePortal(const std::string& address, bool enabled)
        : m_connection(BusConnection::open(address)), m_enabled(enabled)
    {
        sd_bus_slot* slot = nullptr;
        sd_bus_add_object_vtable(m_connection->bus(), &slot, kPath, kInterface, kSettings, this);
        m_object.reset(slot);
        EXPECT_GE(sd_bus_request_name(m_connection->bus(), "org.freedesktop.portal.Desktop", 0), 0);
        m_connection->settle();
    }

    void become(bool enabled)
    {
        m_enabled = enabled;
        sd_bus_emit_signal(m_connection->bus(), kPath, kInterface, "SettingChanged", "ssv",
            "org.gnome.desktop.interface", "enable-animations", "b", static_cast<int>(enabled));
        m_connection->settle();
    }

private:
    static constexpr const char* kPath = "/org/freedesktop/portal/desktop";
    static constexpr const char* kInterface = "org.freedesktop.portal.Settings";
    static const sd_bus_vtable kSettings[];

    static int read(sd_bus_message* call, void* self, sd_bus_error*)
    {
        const char* group = "";
        const char* key = "";
        sd_bus_message_read(call, "ss", &group, &key);
        EXPECT_STREQ(group, "org.gnome.desktop.interface");
        EXPECT_STREQ(key, "enable-animations");
        return sd_bus_reply_method_return(
            call, "v", "v", "b", static_cast<int>(static_cast<FakePortal*>(self)->m_enabled));
    }

    std::unique_ptr<BusConnection> m_connection;
    bool m_enabled;
    BusSlot m_object;
};

const sd_bus_vtable FakePortal::kSettings[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Read", "ss", "v", read, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_SIGNAL("SettingChanged", "ssv", 0),
    SD_BUS_VTABLE_END,
};

class DesktopMotionTest : public testing::Test {
protected:
    PrivateBus daemon;
    std::unique_ptr<BusConnection> connection = BusConnection::open(daemon.address());
    TemporaryFolder configuration;
};

TEST_F(DesktopMotionTest, ADesktopThatSaysNothingMoves)
{
    const DesktopMotion motion(nullptr, configuration.path(), "XFCE");
    EXPECT_FALSE(motion.reducesMotion());
}

TEST_F(DesktopMotionTest, APortalThatHasAnimationsOffReducesMotionAndIsFollowed)
{
    FakePortal portal(daemon.address(), false);
    const DesktopMotion motion(connection.get(), configuration.path(), "GNOME");
    EXPECT_TRUE(runUntil([&] { return motion.reducesMotion(); }));
    portal.become(true);
    EXPECT_TRUE(runUntil([&] { return !motion.reducesMotion(); }));
}

TEST_F(DesktopMotionTest, KdesFactorOfNoneReducesMotionOnKdeAlone)
{
    configuration.write("kdeglobals", "[KDE]\nAnimationDurationFactor=0\n");
    EXPECT_TRUE(DesktopMotion(nullptr, configuration.path(), "KDE").reducesMotion());
    EXPECT_FALSE(DesktopMotion(nullptr, configuration.path(), "GNOME").reducesMotion());
    configuration.write("kdeglobals", "[KDE]\nAnimationDurationFactor=1\n");
    EXPECT_FALSE(DesktopMotion(nullptr, configuration.path(), "KDE").reducesMotion());
}

} // namespace
} // namespace amperly
