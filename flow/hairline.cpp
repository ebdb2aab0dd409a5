#include "flow/hairline.h"

#include "render/look/pixel_painting.h"
#include "render/look/window_colors.h"

#include <QPainter>

namespace amperly {

Hairline::Hairline(const DisplaySettings& display, QWidget* parent) : QWidget(parent), m_display(display)
{
    setFixedHeight(1);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void Hairline::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    // At fractional scales the widget does not begin on a pixel; a picture of the line does.
    const double scale = pixelScale(painter);
    QImage line = clearPicture({static_cast<double>(width()), onPixels(1.0, scale)}, scale);
    line.fill(separatorColor(palette(), m_display));
    drawOnPixels(painter, {}, line);
}

} // namespace amperly
