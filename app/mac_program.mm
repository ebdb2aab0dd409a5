#include "app/mac_program.h"

namespace amperly {

MacProgram::MacProgram(AccessoryApplication& application, UiFont& font, const ViewOf& viewOf)
    : m_desktop(application)
    , m_preferences(NSUserDefaults.standardUserDefaults)
    , m_art(font, MenuBarItem::barHeight())
    , m_popover({.anchor = [this] { return static_cast<NSView*>(m_statusItem.button()); }, .viewOf = viewOf})
    , m_frames(viewOf)
    , m_delegate({m_smcService, m_registry, m_preferences, m_timers, m_statusItem, m_popover, m_loginItem,
          m_desktop, font})
{
    m_displaySettings.onDidChange([this] { m_delegate.appearanceChanged(); });
}

} // namespace amperly
