#include "render/look/quiet_button.h"

#include "render/look/window_colors.h"

#include <QKeyEvent>
#include <QPainter>

namespace amperly {

namespace {

/// Points.
struct QuietLook {
    int topPadding = 3;
    double corner = 5.0;
    double focusLine = 1.5;
};
constexpr QuietLook kLook;

// Opacities of the text's colour.
constexpr double kHovered = 0.07;
constexpr double kPressed = 0.13;

} // namespace

QuietButton::QuietButton(const QString& text, Tone tone, QWidget* parent)
    : QAbstractButton(parent), m_tone(tone)
{
    setText(text);
    setAccessibleName(text);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(tone == Tone::Link ? Qt::PointingHandCursor : Qt::ArrowCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize QuietButton::sizeHint() const
{
    const QSize words = fontMetrics().size(Qt::TextShowMnemonic, text());
    return words + QSize(2 * kSidePadding, 2 * kLook.topPadding);
}

void QuietButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor words = m_tone == Tone::Link ? linkColor(palette()) : palette().color(QPalette::WindowText);
    const QRectF area = QRectF(rect()).adjusted(1, 1, -1, -1);
    if (isDown() || underMouse()) {
        QColor ground = palette().color(QPalette::WindowText);
        ground.setAlphaF(static_cast<float>(isDown() ? kPressed : kHovered));
        painter.setPen(Qt::NoPen);
        painter.setBrush(ground);
        painter.drawRoundedRect(area, kLook.corner, kLook.corner);
    }
    if (hasFocus() && window()->isActiveWindow()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), kLook.focusLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(area, kLook.corner, kLook.corner);
    }
    painter.setPen(words);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
}

void QuietButton::enterEvent(QEnterEvent* event)
{
    QAbstractButton::enterEvent(event);
    update();
}

void QuietButton::leaveEvent(QEvent* event)
{
    QAbstractButton::leaveEvent(event);
    update();
}

void QuietButton::keyPressEvent(QKeyEvent* event)
{
    // Return as well as the space bar: there is no default button beside it.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

} // namespace amperly
