#include "platform/linux/desktop/power_saving.h"

#include "tests/support/private_bus.h"
#include "tests/support/run_until.h"
#include "tests/support/temporary_folder.h"

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

/// What a desktop says, on a machine without profiles.
class PowerSavingPortalTest : public testing::Test {
protected:
    static constexpr const char* kNoProfile = "/nonexistent/platform_profile";

    PrivateBus daemon;
    std::unique_ptr<BusConnection> connection = BusConnection::open(daemon.address());
};

TEST_F(PowerSavingPortalTest, ASwitchThatIsOnIsHeardOf)
{
    FakePortal portal(daemon.address(), true);
    const PowerSaving saving(connection.get(), kNoProfile);
    EXPECT_TRUE(runUntil([&] { return saving.isOn(); }));
}

TEST_F(PowerSavingPortalTest, TheSwitchIsFollowed)
{
    FakePortal portal(daemon.address(), true);
    const PowerSaving saving(connection.get(), kNoProfile);
    ASSERT_TRUE(runUntil([&] { return saving.isOn(); }));
    portal.become(false);
    EXPECT_TRUE(runUntil([&] { return !saving.isOn(); }));
    portal.become(true);
    EXPECT_TRUE(runUntil([&] { return saving.isOn(); }));
}

TEST_F(PowerSavingPortalTest, WithoutAPortalOrABusNothingIsSaved)
{
    const PowerSaving alone(connection.get(), kNoProfile);
    const PowerSaving unconnected(nullptr, kNoProfile);
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

TEST(PowerSavingTest, TheLowPowerProfileSavesPower)
{
    const TemporaryFolder folder;
    folder.write("platform_profile", "low-power\n");
    EXPECT_TRUE(PowerSaving(nullptr, folder / "platform_profile").isOn());
}

TEST(PowerSavingTest, NoOtherProfileDoes)
{
    const TemporaryFolder folder;
    for (const char* const profile : {"balanced\n", "performance\n", "quiet\n", "", "low-power-er\n"}) {
        folder.write("platform_profile", profile);
        EXPECT_FALSE(PowerSaving(nullptr, folder / "platform_profile").isOn()) << profile;
    }
}

TEST(PowerSavingTest, AMachineWithoutProfilesSavesNone)
{
    const TemporaryFolder folder;
    EXPECT_FALSE(PowerSaving(nullptr, folder / "platform_profile").isOn());
}

} // namespace
} // namespace amperly
