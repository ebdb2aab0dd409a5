#include "settings/form_button.h"

#include "render/look/text_style.h"
#include "settings/form_look.h"
#include "settings/mnemonic.h"

#include <QKeyEvent>
#include <QPainter>

namespace amperly {

FormButton::FormButton(const QString& text) : QPushButton(text)
{
    setFont(textFont(TextStyle::Body));
    setAccessibleName(withoutMnemonic(text));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
}

QSize FormButton::sizeHint() const
{
    const int room = 2 * kForm.focusRoom;
    return {fontMetrics().horizontalAdvance(withoutMnemonic(text())) + 2 * kForm.controlPadding + room,
        kForm.controlHeight + room};
}

void FormButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(kForm.disabledOpacity);
    const FormColors colors = FormColors::of(palette());
    const int room = kForm.focusRoom;
    const QRectF body = QRectF(rect()).adjusted(room, room, -room, -room);
    drawPlate(painter, body, kForm.controlCorner,
        isDown() ? colors.fieldPressed : (underMouse() ? colors.fieldHovered : colors.field),
        colors.fieldEdge);
    painter.setPen(colors.text);
    painter.drawText(body, Qt::AlignCenter | mnemonicFlag(*this) | textDirection(text()), text());
    drawFocus(painter, *this, body, kForm.controlCorner);
}

void FormButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QPushButton::keyPressEvent(event);
}

} // namespace amperly
