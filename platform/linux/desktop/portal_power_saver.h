// Whether the user has switched a power saver on, as the desktop's portal tells it: asked for once,
// then followed. Desktops have that switch also on machines whose firmware has no profiles.
#pragma once

#include "platform/linux/bus/bus_connection.h"

namespace amperly {

class PortalPowerSaver {
public:
    /// Asks and follows on `connection`, which must outlive this object; null for a desktop without
    /// a bus. A portal that does not run is not started for it.
    explicit PortalPowerSaver(BusConnection* connection);
    PortalPowerSaver(const PortalPowerSaver&) = delete;
    PortalPowerSaver& operator=(const PortalPowerSaver&) = delete;

    /// False without a portal, before its answer, and where it knows of no such switch.
    [[nodiscard]] bool isOn() const { return m_isOn; }

private:
    static int answered(sd_bus_message* reply, void* self, sd_bus_error*);
    static int changed(sd_bus_message* signal, void* self, sd_bus_error*);

    /// Reads the variant that `value` stands at.
    void take(sd_bus_message* value);

    bool m_isOn = false;
    BusSlot m_match;
    BusSlot m_call;
};

} // namespace amperly
