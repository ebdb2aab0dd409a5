#include "settings/status_preview.h"

#include "render/look/pixel_painting.h"
#include "settings/form_look.h"

#include <QImage>
#include <QPainter>

#include <cmath>

namespace amperly {

namespace {

/// Points.
struct PreviewLook {
    int sidePadding = 12;
    int topPadding = 4;
    double corner = 6.0;
};
constexpr PreviewLook kPreview;

const QColor kPanel = QColor::fromRgbF(0.08F, 0.08F, 0.45F);

/// The mask in white.
QImage inWhite(const CoverageMask& mask)
{
    QImage image(mask.width, mask.height, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < mask.height; ++y) {
        auto* const row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < mask.width; ++x)
            row[x] = qPremultiply(qRgba(255, 255, 255, mask.at(x, y)));
    }
    return image;
}

} // namespace

StatusPreview::StatusPreview() : m_image(StatusImage::Setting{})
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void StatusPreview::show(const StatusImage& image, const QString& spokenLabel)
{
    // Every change of a name is told to whoever listens.
    if (accessibleName() != spokenLabel)
        setAccessibleName(spokenLabel);
    if (m_image == image)
        return;
    m_image = image;
    updateGeometry();
    update();
}

QSize StatusPreview::sizeHint() const
{
    return {static_cast<int>(std::ceil(m_image.widthPoints())) + 2 * kPreview.sidePadding,
        static_cast<int>(std::ceil(m_image.heightPoints())) + 2 * kPreview.topPadding};
}

void StatusPreview::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kPanel);
    painter.drawRoundedRect(rect(), kPreview.corner, kPreview.corner);

    const double scale = pixelScale(painter);
    CoverageMask mask;
    m_image.draw(mask, scale);
    QImage picture = inWhite(mask);
    picture.setDevicePixelRatio(scale);
    drawCentered(painter, QRectF(rect()).center(), picture);
}

} // namespace amperly
