// The settings portal on a bus of the test's own. It knows what it is told, and refuses the rest.
#pragma once

#include "platform/linux/bus/bus_connection.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

namespace amperly {

class FakePortal {
public:
    explicit FakePortal(const std::string& address) : m_connection(BusConnection::open(address))
    {
        sd_bus_slot* slot = nullptr;
        sd_bus_add_object_vtable(m_connection->bus(), &slot, kPath, kInterface, kCalls, this);
        m_object.reset(slot);
        EXPECT_GE(sd_bus_request_name(m_connection->bus(), "org.freedesktop.portal.Desktop", 0), 0);
        m_connection->settle();
    }

    /// The setting is this from now on, and whoever listens is told. `type` is the value's on the bus.
    template <typename... Parts>
    void set(const char* group, const char* key, const char* type, Parts... parts)
    {
        const Write write = [=](sd_bus_message* message) {
            EXPECT_GE(sd_bus_message_append(message, "v", type, parts...), 0);
        };
        m_settings[{group, key}] = write;
        sd_bus_message* signal = nullptr;
        sd_bus_message_new_signal(m_connection->bus(), &signal, kPath, kInterface, "SettingChanged");
        const BusMessage owner(signal);
        sd_bus_message_append(signal, "ss", group, key);
        write(signal);
        sd_bus_send(m_connection->bus(), signal, nullptr);
        m_connection->settle();
    }

    /// How often it was asked for a setting.
    [[nodiscard]] int questions() const { return m_questions; }

private:
    using Write = std::function<void(sd_bus_message*)>;

    static constexpr const char* kPath = "/org/freedesktop/portal/desktop";
    static constexpr const char* kInterface = "org.freedesktop.portal.Settings";
    static const sd_bus_vtable kCalls[];

    static int read(sd_bus_message* call, void* self, sd_bus_error* error)
    {
        auto& portal = *static_cast<FakePortal*>(self);
        ++portal.m_questions;
        const char* group = "";
        const char* key = "";
        sd_bus_message_read(call, "ss", &group, &key);
        const auto setting = portal.m_settings.find({group, key});
        if (setting == portal.m_settings.end())
            return sd_bus_error_set(error, "org.freedesktop.portal.Error.NotFound", "no such setting");
        sd_bus_message* reply = nullptr;
        sd_bus_message_new_method_return(call, &reply);
        const BusMessage owner(reply);
        sd_bus_message_open_container(reply, 'v', "v");
        setting->second(reply);
        sd_bus_message_close_container(reply);
        return sd_bus_send(portal.m_connection->bus(), reply, nullptr);
    }

    std::unique_ptr<BusConnection> m_connection;
    std::map<std::pair<std::string, std::string>, Write> m_settings;
    int m_questions = 0;
    BusSlot m_object;
};

inline const sd_bus_vtable FakePortal::kCalls[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Read", "ss", "v", read, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_SIGNAL("SettingChanged", "ssv", 0),
    SD_BUS_VTABLE_END,
};

} // namespace amperly
