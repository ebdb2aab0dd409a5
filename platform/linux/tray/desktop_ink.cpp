#include "platform/linux/tray/desktop_ink.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

namespace amperly {

namespace {

/// Rec. 601 weights; enough to tell a light text from a dark one.
bool isLight(Ink ink)
{
    const std::uint32_t red = (ink.argb >> 16) & 0xff;
    const std::uint32_t green = (ink.argb >> 8) & 0xff;
    const std::uint32_t blue = ink.argb & 0xff;
    return 299 * red + 587 * green + 114 * blue > 127'500;
}

} // namespace

Ink chooseInk(PanelInk panel, const InkFacts& facts)
{
    if (facts.tray)
        return *facts.tray;
    switch (panel) {
    case PanelInk::White:
        break;
    case PanelInk::Palette:
        return facts.paletteText;
    case PanelInk::ColorScheme:
        // A desktop without a scheme still gives its windows colours, or its theme a name that the
        // windows' colours go by, and its panels are alike.
        return facts.prefersDark.value_or(isLight(facts.paletteText)) ? kWhiteInk : kBlackInk;
    }
    return kWhiteInk;
}

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
