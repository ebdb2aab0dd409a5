#include "platform/linux/desktop/portal_power_saver.h"

#include "tests/support/private_bus.h"
#include "tests/support/run_until.h"

namespace amperly {
namespace {

constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr const char* kMonitor = "org.freedesktop.portal.PowerProfileMonitor";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";

/// The portal, as far as it knows about the power saver. Its property's name is none that the
/// library would export by itself.
class FakePortal {
public:
    FakePortal(const std::string& address, bool saves)
        : m_connection(BusConnection::open(address)), m_saves(saves)
    {
        sd_bus_slot* slot = nullptr;
        sd_bus_add_object(m_connection->bus(), &slot, kPath, answer, this);
        m_object.reset(slot);
        EXPECT_GE(sd_bus_request_name(m_connection->bus(), "org.freedesktop.portal.Desktop", 0), 0);
        m_connection->settle();
    }

    void become(bool saves)
    {
        m_saves = saves;
        sd_bus_emit_signal(m_connection->bus(), kPath, kProperties, "PropertiesChanged", "sa{sv}as", kMonitor,
            2, "version", "u", 1, "power-saver-enabled", "b", static_cast<int>(saves), 0);
        m_connection->settle();
    }

private:
    static int answer(sd_bus_message* call, void* self, sd_bus_error*)
    {
        if (sd_bus_message_is_method_call(call, kProperties, "Get") <= 0)
            return 0;
        const char* interface = "";
        const char* property = "";
        sd_bus_message_read(call, "ss", &interface, &property);
        EXPECT_STREQ(interface, kMonitor);
        EXPECT_STREQ(property, "power-saver-enabled");
        return sd_bus_reply_method_return(
            call, "v", "b", static_cast<int>(static_cast<FakePortal*>(self)->m_saves));
    }

    std::unique_ptr<BusConnection> m_connection;
    bool m_saves;
    BusSlot m_object;
};

class PortalPowerSaverTest : public testing::Test {
protected:
    PrivateBus daemon;
    std::unique_ptr<BusConnection> connection = BusConnection::open(daemon.address());
};

TEST_F(PortalPowerSaverTest, ASwitchThatIsOnIsHeardOf)
{
    FakePortal portal(daemon.address(), true);
    const PortalPowerSaver saver(connection.get());
    EXPECT_TRUE(runUntil([&] { return saver.isOn(); }));
}

TEST_F(PortalPowerSaverTest, TheSwitchIsFollowed)
{
    FakePortal portal(daemon.address(), true);
    const PortalPowerSaver saver(connection.get());
    ASSERT_TRUE(runUntil([&] { return saver.isOn(); }));
    portal.become(false);
    EXPECT_TRUE(runUntil([&] { return !saver.isOn(); }));
    portal.become(true);
    EXPECT_TRUE(runUntil([&] { return saver.isOn(); }));
}

TEST_F(PortalPowerSaverTest, WithoutAPortalOrABusNothingIsSaved)
{
    const PortalPowerSaver alone(connection.get());
    const PortalPowerSaver unconnected(nullptr);
    // The bus has answered the question before it answers this one.
    sd_bus_slot* slot = nullptr;
    bool answered = false;
    sd_bus_call_method_async(
        connection->bus(), &slot, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "GetId",
        [](sd_bus_message*, void* flag, sd_bus_error*) {
            *static_cast<bool*>(flag) = true;
            return 0;
        },
        &answered, nullptr);
    const BusSlot call(slot);
    connection->settle();
    ASSERT_TRUE(runUntil([&] { return answered; }));
    EXPECT_FALSE(alone.isOn());
    EXPECT_FALSE(unconnected.isOn());
}

} // namespace
} // namespace amperly
