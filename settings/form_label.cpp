#include "settings/form_label.h"

#include "settings/form_look.h"
#include "settings/mnemonic.h"

#include <QPainter>

namespace amperly {

FormLabel::FormLabel(const QString& text, TextStyle style, Rank rank, QFont::Weight weight)
    : QLabel(text), m_rank(rank)
{
    setTextFormat(Qt::PlainText);
    setFont(textFont(style, weight));
}

void FormLabel::paintEvent(QPaintEvent*)
{
    const FormColors colors = FormColors::of(palette());
    QPainter painter(this);
    painter.setPen(m_rank == Rank::First ? colors.text : colors.secondary);
    int flags = Qt::AlignVCenter | textDirection(text());
    flags |= Qt::AlignAbsolute;
    flags |= isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft;
    if (buddy() != nullptr)
        flags |= mnemonicFlag(*this);
    if (wordWrap())
        flags |= Qt::TextWordWrap;
    painter.drawText(contentsRect(), flags, text());
}

} // namespace amperly
