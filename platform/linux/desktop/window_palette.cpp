#include "platform/linux/desktop/window_palette.h"

#include <QApplication>
#include <QStyle>
#include <algorithm>
#include <cctype>
#include <utility>

namespace amperly {

namespace {

QPalette darkPalette()
{
    const QColor window(0x2d, 0x2d, 0x30);
    const QColor text(0xf2, 0xf2, 0xf4);
    QPalette palette(text, window, window.lighter(160), window.darker(160), window.lighter(130), text,
        Qt::white, QColor(0x24, 0x24, 0x27), window);
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0x8e, 0xe6));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x6c, 0xb0, 0xf5));
    palette.setColor(QPalette::ToolTipBase, window);
    palette.setColor(QPalette::ToolTipText, text);
    QColor faint = text;
    faint.setAlphaF(0.45F);
    palette.setColor(QPalette::PlaceholderText, faint);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0x8a, 0x8a, 0x90));
    return palette;
}

/// Whether the application's colours are no more than its style's own.
bool hasPlainColors()
{
    const QPalette plain = QApplication::style()->standardPalette();
    const QPalette now = QApplication::palette();
    return now.color(QPalette::Window) == plain.color(QPalette::Window)
        && now.color(QPalette::WindowText) == plain.color(QPalette::WindowText);
}

} // namespace

bool isDarkDesktop(const DesktopLook& look)
{
    if (look.prefersDark)
        return *look.prefersDark;
    std::string name = look.themeName.value_or(std::string());
    std::transform(name.begin(), name.end(), name.begin(),
        [](unsigned char character) { return static_cast<char>(std::tolower(character)); });
    return name.find("dark") != std::string::npos;
}

WindowPalette::WindowPalette(std::function<DesktopLook()> look) : m_look(std::move(look)) { }

WindowPalette::~WindowPalette()
{
    if (m_given)
        QApplication::setPalette(QPalette());
}

void WindowPalette::refresh()
{
    if (!m_given && !hasPlainColors())
        return;
    const bool dark = isDarkDesktop(m_look());
    if (std::exchange(m_given, dark) == dark)
        return;
    // An empty palette stands for the toolkit's own colours.
    QApplication::setPalette(dark ? darkPalette() : QPalette());
}

} // namespace amperly
