#include "flow/no_data.h"

#include "render/look/text_style.h"
#include "render/look/window_colors.h"

#include <QPainter>

namespace amperly {

NoData::NoData(QWidget* parent) : SpokenText(parent)
{
    say(QStringLiteral("No power data available"));
}

void NoData::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setFont(textFont(TextStyle::Body));
    painter.setPen(secondaryColor(palette()));
    painter.drawText(rect(), Qt::AlignCenter, accessibleName());
}

} // namespace amperly
