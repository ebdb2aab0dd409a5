// The colours of the program's windows on desktops that give the toolkit none: the toolkit alone is
// light, whatever the desktop prefers.
#pragma once

#include <QPalette>
#include <functional>
#include <optional>
#include <string>

namespace amperly {

/// What the desktop tells of its colours.
struct DesktopLook {
    std::optional<bool> prefersDark; ///< by the settings portal, where it has a preference
    std::optional<std::string> themeName; ///< of the X11 desktop's theme, such as "Adwaita-dark"
};

/// By the portal if it has a preference, else by what the theme is called.
[[nodiscard]] bool isDarkDesktop(const DesktopLook& look);

class WindowPalette {
public:
    /// `look` is asked at every refresh.
    explicit WindowPalette(std::function<DesktopLook()> look);
    ~WindowPalette();
    WindowPalette(const WindowPalette&) = delete;
    WindowPalette& operator=(const WindowPalette&) = delete;

    /// Gives the application dark colours on a dark desktop and takes them back on a light one. A
    /// toolkit that has a desktop's colours already keeps them.
    void refresh();

private:
    std::function<DesktopLook()> m_look;
    bool m_given = false;
};

} // namespace amperly
