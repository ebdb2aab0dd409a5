#include "platform/linux/popover/close_button.h"

#include <QEnterEvent>
#include <QPainter>
#include <QStyle>

namespace amperly {

namespace {

/// Lengths in logical pixels, shares from 0 to 1 of the text's colour over the window's.
struct CloseLook {
    double cross = 7.0; ///< the side of the square whose diagonals it is
    double stroke = 1.5;
    double inset = 1.0; ///< of the disc, for the line around it
    int inwards = 5; ///< of the disc's middle from the sheet's square corner: on its round one
    double untouched = 0.6; ///< of the cross; the readings are what the eye is to find first
    double line = 0.22;
    double hovered = 0.08;
    double pressed = 0.16;
};
constexpr CloseLook kClose;

QColor mixed(const QPalette& palette, double share)
{
    const QColor text = palette.color(QPalette::WindowText);
    const QColor window = palette.color(QPalette::Window);
    const auto channel
        = [share](int front, int back) { return qRound(front * share + back * (1.0 - share)); };
    return {channel(text.red(), window.red()), channel(text.green(), window.green()),
        channel(text.blue(), window.blue())};
}

} // namespace

CloseButton::CloseButton(QWidget* parent) : QAbstractButton(parent)
{
    setAccessibleName(QStringLiteral("Close"));
    setFocusPolicy(Qt::TabFocus);
}

QRect CloseButton::positionOn(const QRect& sheet, Qt::LayoutDirection direction)
{
    QRect position(0, 0, kSide, kSide);
    position.moveCenter(sheet.topRight() + QPoint(-kClose.inwards, kClose.inwards));
    return QStyle::visualRect(direction, sheet, position);
}

QColor CloseButton::ground() const
{
    if (isDown())
        return mixed(palette(), kClose.pressed);
    return mixed(palette(), underMouse() ? kClose.hovered : 0.0);
}

void CloseButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool isFocused = hasFocus() && window()->isActiveWindow();
    const QColor line = isFocused ? palette().color(QPalette::Highlight) : mixed(palette(), kClose.line);
    painter.setPen(QPen(line, isFocused ? kClose.stroke : 1.0));
    painter.setBrush(ground());
    painter.drawEllipse(QRectF(rect()).adjusted(kClose.inset, kClose.inset, -kClose.inset, -kClose.inset));

    const bool isTouched = isDown() || underMouse() || isFocused;
    painter.setPen(QPen(
        mixed(palette(), isTouched ? 1.0 : kClose.untouched), kClose.stroke, Qt::SolidLine, Qt::RoundCap));
    const QPointF middle = QRectF(rect()).center();
    const double reach = kClose.cross / 2.0;
    painter.drawLine(middle + QPointF(-reach, -reach), middle + QPointF(reach, reach));
    painter.drawLine(middle + QPointF(-reach, reach), middle + QPointF(reach, -reach));
}

void CloseButton::enterEvent(QEnterEvent* event)
{
    QAbstractButton::enterEvent(event);
    update();
}

void CloseButton::leaveEvent(QEvent* event)
{
    QAbstractButton::leaveEvent(event);
    update();
}

} // namespace amperly
