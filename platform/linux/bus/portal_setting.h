// One setting of the desktop as the settings portal tells it: asked for once, then followed.
#pragma once

#include "platform/linux/bus/bus_connection.h"

#include <functional>

namespace amperly {

class PortalSetting {
public:
    /// Reads the variant that `value` stands at, and tells whether it could; null stands for a
    /// portal without an answer, or with one that could not be read.
    using Arrived = std::function<bool(sd_bus_message* value)>;

    /// Asks and follows on `connection`, which must outlive this object, as the texts must. A
    /// portal that does not run is not started for it: desktops that have one run it anyway.
    PortalSetting(BusConnection& connection, const char* group, const char* key, Arrived arrived);
    PortalSetting(const PortalSetting&) = delete;
    PortalSetting& operator=(const PortalSetting&) = delete;

    /// Asks once more, for a portal that came later.
    void refresh();

private:
    static int answered(sd_bus_message* reply, void* self, sd_bus_error*);
    static int changed(sd_bus_message* signal, void* self, sd_bus_error*);

    BusConnection& m_connection;
    const char* m_group;
    const char* m_key;
    Arrived m_arrived;
    BusSlot m_match;
    BusSlot m_call;
};

} // namespace amperly
