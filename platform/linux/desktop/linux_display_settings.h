// What the user wants of displays, from everything that Linux desktops tell: the settings portal,
// the settings of an X11 session, KDE's own file.
#pragma once

#include "platform/display_settings.h"
#include "platform/linux/bus/portal_setting.h"
#include "platform/linux/files/xdg_session.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace amperly {

/// The user's factor on the length of animations, of which 0 means none, in the contents of KDE's
/// kdeglobals; nothing when it does not say.
[[nodiscard]] std::optional<double> kdeAnimationFactor(std::string_view globals);

class LinuxDisplaySettings : public DisplaySettings {
public:
    /// Asks the portal over `connection`, which must outlive this object, and follows it; without
    /// a connection, there is no portal. `configFolder` is where KDE's file is.
    LinuxDisplaySettings(BusConnection* connection, std::string configFolder, const CurrentDesktop& desktop);

    /// One setting against motion is enough.
    [[nodiscard]] bool reducesMotion() const override;

    /// By the portal, or by a theme for high contrast.
    [[nodiscard]] bool increasesContrast() const override;

    /// Called when the portal or refresh() brings news.
    void onChanged(std::function<void()> handler) { m_changed = std::move(handler); }

    /// Looks at the theme of the X11 session once more: nobody tells of another one.
    void refresh();

private:
    /// Keeps the news, and tells of it if it is any.
    template <typename Value>
    void become(Value& kept, const Value& news)
    {
        if (std::exchange(kept, news) != news && m_changed)
            m_changed();
    }

    std::string m_kdeGlobals; ///< empty on other desktops
    bool m_portalStopsAnimations = false;
    bool m_portalWantsContrast = false;
    bool m_themeHasContrast = false;
    std::function<void()> m_changed;
    std::optional<PortalSetting<bool>> m_animations; ///< whether they are on, in GNOME
    std::optional<PortalSetting<std::uint32_t>> m_contrast;
};

} // namespace amperly
