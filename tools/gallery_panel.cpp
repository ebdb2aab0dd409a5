#include "tools/gallery_panel.h"

#include "render/look/text_style.h"
#include "render/status_art.h"
#include "tools/gallery_stage.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>
#include <cmath>

namespace amperly {
namespace {

struct State {
    const char* name;
    std::optional<PowerSample> sample;
};

/// Every phrase of the pill, and what is seldom seen.
std::vector<State> states()
{
    return {
        {"charging",
            PowerSample{.systemLoad = 14.2,
                .adapterIn = 30.1,
                .battery = 15.9,
                .adapterRating = 67,
                .batteryPercent = 64,
                .externalConnected = true}},
        {"on battery", PowerSample{.systemLoad = 8.6, .battery = -8.6, .batteryPercent = 82}},
        {"not charging",
            PowerSample{.systemLoad = 11.3,
                .adapterIn = 11.3,
                .adapterRating = 67,
                .batteryPercent = 100,
                .externalConnected = true}},
        {"a weak charger",
            PowerSample{.systemLoad = 38.4,
                .adapterIn = 28.9,
                .battery = -9.5,
                .adapterRating = 30,
                .batteryPercent = 47,
                .externalConnected = true}},
        {"a dead charger",
            PowerSample{.systemLoad = 12.7,
                .adapterIn = 0.2,
                .battery = -12.5,
                .adapterRating = 5,
                .batteryPercent = 31,
                .externalConnected = true}},
        {"a strong charger",
            PowerSample{.systemLoad = 62.5,
                .adapterIn = 137.8,
                .battery = 75.3,
                .adapterRating = 140,
                .batteryPercent = 12,
                .externalConnected = true}},
        {"unknown load and input",
            PowerSample{.battery = 15.9,
                .batteryPercent = 64,
                .externalConnected = true,
                .systemLoadKnown = false,
                .adapterInKnown = false}},
        {"no battery", PowerSample{.systemLoad = 45.0, .adapterIn = 45.0, .externalConnected = true}},
        {"nothing known",
            PowerSample{.externalConnected = true,
                .systemLoadKnown = false,
                .adapterInKnown = false,
                .batteryKnown = false}},
        {"thousands",
            PowerSample{.systemLoad = 1234.5,
                .adapterIn = 1200.0,
                .battery = -34.5,
                .adapterRating = 1100,
                .batteryPercent = 100,
                .externalConnected = true}},
        {"no data", std::nullopt},
    };
}

constexpr double kSettlingSeconds = 3.7; // the flows have settled, and a breath is half drawn

struct Card {
    QString caption;
    QImage panel;
};

/// Panels beside each other, as cards, each with its caption above it.
bool writeSheet(const QString& path, const std::vector<Card>& cards, const Look& look, double scale)
{
    constexpr int kColumns = 4;
    constexpr int kGap = 24;
    constexpr int kCaption = 20;
    constexpr double kCorner = 12.0;
    QSize cell;
    for (const Card& card : cards)
        cell = cell.expandedTo(card.panel.deviceIndependentSize().toSize());
    cell.rheight() += kCaption;
    const int rows = (static_cast<int>(cards.size()) + kColumns - 1) / kColumns;
    const QSize size(kGap + kColumns * (cell.width() + kGap), kGap + rows * (cell.height() + kGap));
    QImage sheet(size * scale, QImage::Format_RGB32);
    sheet.setDevicePixelRatio(scale);
    sheet.fill(look.desktop);
    QPainter painter(&sheet);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(textFont(TextStyle::Caption));
    painter.setPen(look.palette.color(QPalette::PlaceholderText));
    for (std::size_t index = 0; index < cards.size(); ++index) {
        const int column = static_cast<int>(index) % kColumns;
        const int row = static_cast<int>(index) / kColumns;
        const QPointF corner(kGap + column * (cell.width() + kGap), kGap + row * (cell.height() + kGap));
        painter.setClipping(false);
        painter.drawText(
            QRectF(corner, QSizeF(cell.width(), kCaption)), Qt::AlignLeading, cards[index].caption);
        const QRectF place(corner + QPointF(0.0, kCaption), cards[index].panel.deviceIndependentSize());
        QPainterPath outline;
        outline.addRoundedRect(place, kCorner, kCorner);
        painter.setClipPath(outline);
        painter.drawImage(place.topLeft(), cards[index].panel);
    }
    return sheet.save(path);
}

bool writeStates(const QString& path, const Look& look, double scale)
{
    std::vector<Card> cards;
    for (const State& state : states()) {
        PanelOnDisplay panel(state.sample);
        panel.play(kSettlingSeconds);
        cards.push_back({QLatin1String(state.name), panel.picture(scale)});
    }
    return writeSheet(path, cards, look, scale);
}

/// How the panel grows in and a figure rolls: one picture each few frames.
bool writeMotion(const QString& folder, const Look& look)
{
    constexpr int kPictures = 8;
    constexpr double kStep = 0.05;
    const std::vector<State> all = states();
    PanelOnDisplay panel(all.front().sample);
    std::vector<Card> cards;
    for (int picture = 1; picture <= kPictures; ++picture) {
        panel.play(kStep);
        cards.push_back(
            {QStringLiteral("after %1 ms").arg(std::lround(picture * kStep * 1000.0)), panel.picture(1.0)});
    }
    return writeSheet(
        folder + QStringLiteral("/panel-appears-%1.png").arg(QLatin1String(look.name)), cards, look, 1.0);
}

} // namespace

bool writePanelGallery(const QString& folder, StatusArt& art)
{
    const Injected<StatusArt> inForce(art);
    const QPalette usual = QApplication::palette();
    bool worked = true;
    for (const Look& look : looks()) {
        QApplication::setPalette(look.palette);
        const QString panel = folder + QStringLiteral("/panel-") + QLatin1String(look.name);
        if (QGuiApplication::isRightToLeft()) {
            worked &= writeStates(panel + QStringLiteral("-mirrored.png"), look, 2.0);
            continue;
        }
        for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0})
            worked &= writeStates(panel + QStringLiteral("-%1x.png").arg(scale), look, scale);
        worked &= writeMotion(folder, look);
    }
    QApplication::setPalette(usual);
    return worked;
}

} // namespace amperly
