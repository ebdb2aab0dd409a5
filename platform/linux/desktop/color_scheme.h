// Whether the desktop's applications are to be light or dark, as the settings portal tells it.
#pragma once

#include "platform/linux/bus/portal_setting.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace amperly {

class ColorScheme {
public:
    /// Asks and follows on `connection`, which must outlive this object. A portal that does not
    /// run is not started for it: panels of desktops that have one run it anyway.
    explicit ColorScheme(BusConnection& connection);
    ColorScheme(const ColorScheme&) = delete;
    ColorScheme& operator=(const ColorScheme&) = delete;

    /// Nothing without a portal, before its answer, or where it has no preference.
    [[nodiscard]] std::optional<bool> prefersDark() const { return m_prefersDark; }

    void onChanged(std::function<void()> handler) { m_changed = std::move(handler); }

    /// Asks once more, for a portal that came later.
    void refresh() { m_setting.refresh(); }

private:
    bool take(sd_bus_message* value);
    void become(std::uint32_t scheme);

    std::optional<bool> m_prefersDark;
    std::function<void()> m_changed;
    PortalSetting m_setting;
};

} // namespace amperly
