#include "platform/linux/tray/desktop_ink.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

namespace amperly {

DesktopInk::DesktopInk(BusConnection* connection) : m_tray(X11TrayColors::create())
{
    if (m_tray)
        m_tray->onChanged([this] { announce(); });
    if (connection) {
        m_scheme.emplace(*connection);
        m_scheme->onChanged([this] {
            if (m_schemeChanged)
                m_schemeChanged();
            announce();
        });
    }
    qGuiApp->installEventFilter(this);
}

DesktopInk::~DesktopInk() = default;

bool DesktopInk::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::ApplicationPaletteChange)
        announce();
    return false;
}

Ink DesktopInk::ink(PanelInk panel) const
{
    InkFacts facts;
    if (m_tray)
        facts.tray = m_tray->ink();
    facts.prefersDark = prefersDark();
    facts.paletteText = Ink{QGuiApplication::palette().color(QPalette::WindowText).rgba()};
    return chooseInk(panel, facts);
}

std::optional<bool> DesktopInk::prefersDark() const
{
    return m_scheme ? m_scheme->prefersDark() : std::nullopt;
}

void DesktopInk::panelChanged()
{
    if (m_tray)
        m_tray->refresh();
    if (m_scheme)
        m_scheme->refresh();
}

void DesktopInk::announce()
{
    if (m_changed)
        m_changed();
}

} // namespace amperly
