#include "settings/picker.h"

#include "render/look/text_style.h"
#include "settings/form_look.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

#include <algorithm>

namespace amperly {

namespace {

/// Points.
struct PickerLook {
    int iconWidth = 20;
    int iconGap = 6; ///< between icon and text
    int arrowGap = 8; ///< between text and arrows
    double arrowWidth = 7.0;
    double arrowHeight = 3.5;
    double betweenArrows = 3.0;
    double arrowLine = 1.4;
};
constexpr PickerLook kPicker;

/// Up and down: the list may open to either side.
void drawArrows(QPainter& painter, const QPointF& center, const QColor& color)
{
    const double half = kPicker.arrowWidth * 0.5;
    QPainterPath path;
    for (const double side : {-1.0, 1.0}) {
        const double foot = center.y() + side * kPicker.betweenArrows * 0.5;
        path.moveTo(center.x() - half, foot);
        path.lineTo(center.x(), foot + side * kPicker.arrowHeight);
        path.lineTo(center.x() + half, foot);
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, kPicker.arrowLine, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(path);
}

} // namespace

Picker::Picker()
{
    setFont(textFont(TextStyle::Body));
    setIconSize({kPicker.iconWidth, kPicker.iconWidth});
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    // Letters typed while the list is closed change the option without further announcement.
    connect(this, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (!m_isShowing && index >= 0 && m_chosen)
            m_chosen(index);
    });
}

void Picker::setChoice(std::optional<int> index)
{
    m_isShowing = true;
    setCurrentIndex(index.value_or(-1));
    m_isShowing = false;
}

std::optional<int> Picker::choice() const
{
    return currentIndex() < 0 ? std::nullopt : std::optional(currentIndex());
}

int Picker::iconRoom() const
{
    return count() > 0 && !itemIcon(0).isNull() ? kPicker.iconWidth + kPicker.iconGap : 0;
}

QSize Picker::sizeHint() const
{
    int widest = 0;
    for (int each = 0; each < count(); ++each)
        widest = std::max(widest, fontMetrics().horizontalAdvance(itemText(each)));
    const int arrows = kPicker.arrowGap + static_cast<int>(kPicker.arrowWidth);
    const int room = 2 * kForm.focusRoom;
    return {iconRoom() + widest + arrows + 2 * kForm.controlPadding + room, kForm.controlHeight + room};
}

void Picker::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(kForm.disabledOpacity);
    const FormColors colors = FormColors::of(palette());
    const int room = kForm.focusRoom;
    const QRectF body = QRectF(rect()).adjusted(room, room, -room, -room);
    drawPlate(painter, body, kForm.controlCorner, underMouse() ? colors.fieldHovered : colors.field,
        colors.fieldEdge);

    // Laid out from left to right, then mirrored where the form is.
    const auto placed = [this](const QRectF& area) {
        return isRightToLeft() ? QRectF(width() - area.right(), area.top(), area.width(), area.height())
                               : area;
    };
    const QRectF inner = body.adjusted(kForm.controlPadding, 0, -kForm.controlPadding, 0);
    QRectF text = inner.adjusted(0, 0, -(kPicker.arrowWidth + kPicker.arrowGap), 0);
    if (const QIcon icon = itemIcon(currentIndex()); !icon.isNull()) {
        const QRectF box(text.left(), text.top(), kPicker.iconWidth, text.height());
        icon.paint(&painter, placed(box).toRect());
        text.setLeft(box.right() + kPicker.iconGap);
    }
    painter.setPen(colors.text);
    int flags = Qt::AlignVCenter | textDirection(currentText());
    flags |= Qt::AlignAbsolute;
    flags |= isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft;
    painter.drawText(placed(text), flags, currentText());
    const QRectF arrows(inner.right() - kPicker.arrowWidth, inner.top(), kPicker.arrowWidth, inner.height());
    drawArrows(painter, placed(arrows).center(), colors.secondary);
    drawFocus(painter, *this, body, kForm.controlCorner);
}

void Picker::wheelEvent(QWheelEvent* event)
{
    // The wheel moves the form, and changes nothing that happens to pass under the pointer.
    event->ignore();
}

void Picker::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        showPopup();
    else
        QComboBox::keyPressEvent(event);
}

} // namespace amperly
