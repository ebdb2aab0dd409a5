#include "app/mac_program.h"

namespace amperly {

MacProgram::MacProgram(AccessoryApplication& application, UiFont& font, const ViewOf& viewOf)
    : m_desktop(application)
    , m_preferences(NSUserDefaults.standardUserDefaults)
    , m_art(font, MenuBarItem::barHeight())
    , m_popover({.anchor = [this] { return static_cast<NSView*>(m_statusItem.button()); }, .viewOf = viewOf})
    , m_frames(viewOf)
    , m_delegate({
          .power = m_power,
          .preferences = m_preferences,
          .timers = m_timers,
          .statusItem = m_statusItem,
          .popover = m_popover,
          .loginItem = m_loginItem,
          .desktop = m_desktop,
          .frames = m_frames,
          .display = m_display,
      })
{
    m_display.onDidChange([this] { m_delegate.appearanceChanged(); });
}

} // namespace amperly
