#include "render/status_art.h"
#include "render/status_image.h"
#include "tools/gallery_sheet.h"
#include "tools/gallery_stage.h"
#include "tools/gallery_status.h"

#include <QImage>
#include <QPainter>
#include <QRectF>

namespace amperly {
namespace {

using Arrangement = StatusImage::Arrangement;

/// Lengths in pixels. The picture is shown at half its size.
struct HeroLook {
    int width = 1400;
    int height = 500;
    int margin = 110; ///< around both bars
    int bar = 120; ///< height of a bar
    int between = 40;
    double corner = 28.0;
    int pad = 48; ///< between a bar's end and what stands in it
    double scale = 4.0; ///< of the images
};
constexpr HeroLook kHero;

StatusImage stacked()
{
    StatusImage image({.arrangement = Arrangement::Stacked});
    image.add({.symbol = "laptopcomputer", .text = "14.2", .wholeText = {}});
    image.add({.symbol = "powerplug.fill", .text = "30.1", .wholeText = {}});
    image.add({.symbol = "battery.100percent.bolt", .text = "+15.9", .wholeText = {}});
    return image;
}

StatusImage line()
{
    StatusImage image({.arrangement = Arrangement::Line});
    image.add({.symbol = "laptopcomputer", .text = "8.6 W", .wholeText = {}});
    image.add({.symbol = "battery.75percent", .text = "\u22128.6 W", .wholeText = {}});
    return image;
}

void layBar(QImage& picture, int top, const PanelColours& colours)
{
    const int width = kHero.width - 2 * kHero.margin;
    {
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colours.panel);
        painter.drawRoundedRect(QRectF(kHero.margin, top, width, kHero.bar), kHero.corner, kHero.corner);
    }
    CoverageMask mask;
    const auto inset = [&] { return top + (kHero.bar - mask.height) / 2; };
    stacked().draw(mask, kHero.scale);
    layInk(picture, mask, kHero.margin + kHero.pad, inset(), colours.ink);
    line().draw(mask, kHero.scale);
    layInk(picture, mask, kHero.margin + width - kHero.pad - mask.width, inset(), colours.ink);
}

} // namespace

bool writeHero(const QString& path, StatusArt& art)
{
    const Injected<StatusArt> inForce(art);
    QImage picture(kHero.width, kHero.height, QImage::Format_RGB32);
    QPainter(&picture).fillRect(picture.rect(), evening(picture.size()));
    layBar(picture, kHero.margin, kLightPanel);
    layBar(picture, kHero.margin + kHero.bar + kHero.between, kDarkPanel);
    return picture.save(path);
}

} // namespace amperly
