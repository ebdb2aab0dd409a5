#include "render/status_art.h"
#include "tools/gallery_panel.h"
#include "tools/gallery_stage.h"

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QPainterPath>

namespace amperly {
namespace {

/// Lengths in points.
struct SceneLook {
    double scale = 1.5;
    double margin = 40.0; ///< around the panel
    double corner = 12.0;
    int shadowReach = 22;
    double shadowDrop = 5.0;
    int shadowAlpha = 3; ///< of each of its steps
};
constexpr SceneLook kScene;

// One breath of the nodes. At these watts the pulses of both flows move two spacings meanwhile, so
// that the last frame is followed by the first.
constexpr double kRoundSeconds = 5.6;
constexpr double kFlowWatts = 65.4545;
const PowerSample kSample{.systemLoad = kFlowWatts,
    .adapterIn = 2.0 * kFlowWatts,
    .battery = kFlowWatts,
    .adapterRating = 140,
    .batteryPercent = 64,
    .externalConnected = true};

QImage scene(const QImage& panel)
{
    const QSizeF size = panel.deviceIndependentSize();
    const QSizeF whole = size + QSizeF(2.0 * kScene.margin, 2.0 * kScene.margin);
    QImage picture((whole * kScene.scale).toSize(), QImage::Format_RGB32);
    picture.setDevicePixelRatio(kScene.scale);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(QRectF(QPointF(), whole), evening(whole));
    const QRectF place(QPointF(kScene.margin, kScene.margin), size);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, kScene.shadowAlpha));
    for (int step = kScene.shadowReach; step > 0; --step)
        painter.drawRoundedRect(place.adjusted(-step, -step, step, step).translated(0.0, kScene.shadowDrop),
            kScene.corner + step, kScene.corner + step);
    QPainterPath card;
    card.addRoundedRect(place, kScene.corner, kScene.corner);
    painter.setClipPath(card);
    painter.drawImage(place.topLeft(), panel);
    return picture;
}

} // namespace

bool writePanelFrames(const QString& folder, StatusArt& art)
{
    const Injected<StatusArt> inForce(art);
    if (!QDir().mkpath(folder))
        return false;
    const QPalette usual = QApplication::palette();
    QApplication::setPalette(looks().back().palette);
    bool worked = true;
    {
        PanelOnDisplay panel(kSample);
        panel.play(2.0 * kRoundSeconds); // until nothing but the round itself moves
        constexpr int kFrames = static_cast<int>(kRoundSeconds * kGalleryFrameRate);
        for (int frame = 0; frame < kFrames; ++frame) {
            panel.play(1.0 / kGalleryFrameRate, kGalleryFrameRate);
            worked &= scene(panel.picture(kScene.scale))
                          .save(folder + QStringLiteral("/%1.png").arg(frame, 3, 10, QLatin1Char('0')));
        }
    }
    QApplication::setPalette(usual);
    return worked;
}

} // namespace amperly
