// One setting of the desktop as the settings portal tells it: asked for once, then followed. A portal
// that does not run is not started for it: desktops that have one run it anyway.
#pragma once

#include "platform/linux/bus/bus_connection.h"

namespace amperly {

inline constexpr const char* kPortalName = "org.freedesktop.portal.Desktop";
inline constexpr const char* kPortalPath = "/org/freedesktop/portal/desktop";

template <typename Value>
class PortalSetting {
public:
    /// Asks and follows on `connection`, which must outlive this object, as the texts must.
    PortalSetting(BusConnection& connection, const char* group, const char* key)
        : m_connection(connection)
        , m_group(group)
        , m_key(key)
        , m_match(connection.match<&PortalSetting::changed>({.sender = kPortalName,
                                                                .interface = kInterface,
                                                                .member = "SettingChanged",
                                                                .firstArgument = group,
                                                                .secondArgument = key},
              *this))
    {
        refresh();
    }
    PortalSetting(const PortalSetting&) = delete;
    PortalSetting& operator=(const PortalSetting&) = delete;

    /// Nothing without a portal, before its answer, and where it does not know the setting.
    [[nodiscard]] const std::optional<Value>& value() const { return m_value; }

    /// Called when value() has become another.
    void onChanged(std::function<void()> handler) { m_handler = std::move(handler); }

    /// Asks once more, for a portal that came later.
    void refresh()
    {
        m_call = m_connection.call<&PortalSetting::answered>(
            {kPortalName, kPortalPath, kInterface, "Read", false}, *this, m_group, m_key);
    }

private:
    static constexpr const char* kInterface = "org.freedesktop.portal.Settings";

    void answered(std::optional<BusVariant<BusVariant<Value>>> answer)
    {
        become(answer ? std::optional(answer->value.value) : std::nullopt);
    }

    void changed(std::string_view, std::string_view, BusVariant<Value> now) { become(now.value); }

    void become(std::optional<Value> value)
    {
        if (std::exchange(m_value, value) != value && m_handler)
            m_handler();
    }

    BusConnection& m_connection;
    const char* m_group;
    const char* m_key;
    std::optional<Value> m_value;
    std::function<void()> m_handler;
    BusSlot m_match;
    BusSlot m_call;
};

} // namespace amperly
