// Colours that desktops give to windows, for pictures.
#pragma once

#include <QColor>
#include <QPalette>

namespace amperly {

/// The toolkit's own, where no desktop gives any.
inline QPalette lightPalette()
{
    QPalette palette;
    const QColor window(0xef, 0xef, 0xef);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, Qt::black);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Button, window);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Highlight, QColor(0x30, 0x8c, 0xc6));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

/// As dark desktops give them.
inline QPalette darkPalette()
{
    QPalette palette;
    const QColor window(0x32, 0x32, 0x34);
    const QColor base(0x26, 0x26, 0x28);
    const QColor text(0xf2, 0xf2, 0xf4);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, text);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Button, window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0x8e, 0xe6));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x6c, 0xb0, 0xf5));
    return palette;
}

inline QPalette highContrastPalette()
{
    QPalette palette = darkPalette();
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, Qt::white);
    for (const QPalette::ColorRole role : {QPalette::Window, QPalette::Button, QPalette::Base})
        palette.setColor(role, Qt::black);
    palette.setColor(QPalette::Highlight, QColor(0xff, 0xd6, 0x0a));
    palette.setColor(QPalette::HighlightedText, Qt::black);
    palette.setColor(QPalette::Link, QColor(0x8a, 0xc8, 0xff));
    return palette;
}

} // namespace amperly
