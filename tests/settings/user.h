// What a user does to a widget, and what the screen shows of it.
#pragma once

#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

namespace amperly {

inline void press(QWidget& widget, Qt::Key key, const QString& text = {})
{
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(&widget, &down);
    QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier, text);
    QApplication::sendEvent(&widget, &up);
}

inline void click(QWidget& widget, const QPoint& place)
{
    const QPointF at(place);
    QMouseEvent down(
        QEvent::MouseButtonPress, at, widget.mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(&widget, &down);
    QMouseEvent up(QEvent::MouseButtonRelease, at, widget.mapToGlobal(at), Qt::LeftButton, Qt::NoButton, {});
    QApplication::sendEvent(&widget, &up);
}

inline void click(QWidget& widget)
{
    click(widget, widget.rect().center());
}

/// The widget alone, on nothing, for a screen of `scale` pixels per point.
inline QImage pictureOf(QWidget& widget, double scale = 1.0)
{
    QImage image((QSizeF(widget.size()) * scale).toSize(), QImage::Format_ARGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    widget.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

/// Mirrors every window that is made while it lives.
class MirroredWindows {
public:
    MirroredWindows() { QApplication::setLayoutDirection(Qt::RightToLeft); }
    ~MirroredWindows() { QApplication::setLayoutDirection(Qt::LeftToRight); }
    MirroredWindows(const MirroredWindows&) = delete;
    MirroredWindows& operator=(const MirroredWindows&) = delete;
};

} // namespace amperly
