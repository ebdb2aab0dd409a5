// Whether the desktop's applications are to be light or dark, as the settings portal tells it.
#pragma once

#include "platform/linux/bus/portal_setting.h"

namespace amperly {

class ColorScheme {
public:
    /// Asks and follows on `connection`, which must outlive this object.
    explicit ColorScheme(BusConnection& connection)
        : m_setting(connection, "org.freedesktop.appearance", "color-scheme")
    {
        m_setting.onChanged([this] { follow(); });
    }

    /// Nothing without a portal, before its answer, or where it has no preference.
    [[nodiscard]] std::optional<bool> prefersDark() const { return m_prefersDark; }

    void onChanged(std::function<void()> handler) { m_changed = std::move(handler); }

    /// Asks once more, for a portal that came later.
    void refresh() { m_setting.refresh(); }

private:
    void follow()
    {
        constexpr std::uint32_t kPreferDark = 1;
        constexpr std::uint32_t kPreferLight = 2;
        std::optional<bool> prefersDark;
        if (m_setting.value() == kPreferDark || m_setting.value() == kPreferLight)
            prefersDark = m_setting.value() == kPreferDark;
        if (std::exchange(m_prefersDark, prefersDark) != prefersDark && m_changed)
            m_changed();
    }

    PortalSetting<std::uint32_t> m_setting;
    std::optional<bool> m_prefersDark;
    std::function<void()> m_changed;
};

} // namespace amperly
