#include "flow/no_data.h"

#include "render/look/text_style.h"
#include "render/look/window_colors.h"

#include <QPainter>

namespace amperly {

NoData::NoData(const DisplaySettings& display, QWidget* parent) : SpokenText(parent), m_display(display)
{
    say(QStringLiteral("No power data available"));
}

void NoData::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setFont(textFont(TextStyle::Body));
    painter.setPen(secondaryColor(palette(), m_display));
    painter.drawText(rect(), Qt::AlignCenter, accessibleName());
}

} // namespace amperly
