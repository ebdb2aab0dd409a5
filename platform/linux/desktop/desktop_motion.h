// Whether things may move, from everything that Linux desktops tell: the settings portal, the
// settings of an X11 session, KDE's own file. One that says no is enough.
#pragma once

#include "platform/linux/desktop/portal_animations.h"
#include "platform/motion_setting.h"

#include <optional>
#include <string>
#include <string_view>

namespace amperly {

class DesktopMotion : public MotionSetting {
public:
    /// Asks the portal over `connection`, which must outlive this object; without one, there is
    /// no portal. `configFolder` is where KDE's file is, `currentDesktop` as XDG_CURRENT_DESKTOP
    /// has it.
    DesktopMotion(BusConnection* connection, std::string configFolder, std::string_view currentDesktop);

    [[nodiscard]] bool reducesMotion() const override;

private:
    std::optional<PortalAnimations> m_portal;
    std::string m_kdeGlobals; ///< empty on other desktops
};

} // namespace amperly
