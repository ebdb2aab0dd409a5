// Whether the desktop's applications are to be light or dark, as the settings portal tells it.
#pragma once

#include "platform/linux/bus/bus_connection.h"

#include <functional>
#include <optional>

namespace amperly {

class ColourScheme {
public:
    /// Asks and follows on `connection`, which must outlive this object. A portal that does not
    /// run is not started for it: panels of desktops that have one run it anyway.
    explicit ColourScheme(BusConnection& connection);
    ColourScheme(const ColourScheme&) = delete;
    ColourScheme& operator=(const ColourScheme&) = delete;

    /// Nothing without a portal, before its answer, or where it has no preference.
    [[nodiscard]] std::optional<bool> prefersDark() const { return m_prefersDark; }

    void onChanged(std::function<void()> handler) { m_changed = std::move(handler); }

    /// Asks once more, for a portal that came later.
    void refresh();

private:
    static int answered(sd_bus_message* reply, void* self, sd_bus_error*);
    static int settingChanged(sd_bus_message* signal, void* self, sd_bus_error*);
    void become(std::uint32_t scheme);

    BusConnection& m_connection;
    std::optional<bool> m_prefersDark;
    std::function<void()> m_changed;
    BusSlot m_match;
    BusSlot m_call;
};

} // namespace amperly
