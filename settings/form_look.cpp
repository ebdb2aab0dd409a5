#include "settings/form_look.h"

#include "render/look/pixel_painting.h"
#include "render/look/window_colors.h"

#include <QImage>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace amperly {

namespace {

/// Shares of the text's colour over what it stands on.
struct Shares {
    double secondary;
    double card;
    double cardEdge;
    double separator;
    double field;
    double fieldHovered;
    double fieldPressed;
    double fieldEdge;
    double trough;
    double off;
    double offEdge;
    double segment;
    double segmentEdge;
};
// Found by eye. On dark windows more is needed for the same difference.
constexpr Shares kOnLight{.secondary = 0.6,
    .card = 0.0,
    .cardEdge = 0.11,
    .separator = 0.09,
    .field = 0.02,
    .fieldHovered = 0.05,
    .fieldPressed = 0.1,
    .fieldEdge = 0.2,
    .trough = 0.075,
    .off = 0.2,
    .offEdge = 0.28,
    .segment = 0.0,
    .segmentEdge = 0.2};
constexpr Shares kOnDark{.secondary = 0.7,
    .card = 0.055,
    .cardEdge = 0.1,
    .separator = 0.1,
    .field = 0.1,
    .fieldHovered = 0.15,
    .fieldPressed = 0.2,
    .fieldEdge = 0.2,
    .trough = 0.08,
    .off = 0.22,
    .offEdge = 0.32,
    .segment = 0.26,
    .segmentEdge = 0.34};

/// The area whose edges are those of whole pixels, so that all four look alike at any scale.
QRectF onPixels(const QPainter& painter, const QRectF& area)
{
    const QTransform toPixels = painter.deviceTransform();
    const QRectF pixels = toPixels.mapRect(area);
    const QPointF upperLeft(std::round(pixels.left()), std::round(pixels.top()));
    const QPointF lowerRight(std::round(pixels.right()), std::round(pixels.bottom()));
    return toPixels.inverted().mapRect(QRectF(upperLeft, lowerRight));
}

} // namespace

FormColors FormColors::of(const QPalette& palette)
{
    const auto role
        = [&palette](QPalette::ColorRole which) { return palette.color(QPalette::Active, which); };
    const QColor text = role(QPalette::WindowText);
    const QColor window = role(QPalette::Window);
    const bool dark = isDark(palette);
    const Shares& shares = dark ? kOnDark : kOnLight;

    FormColors colors;
    colors.text = text;
    // Cards are lighter than the window: on light desktops the ground of lists and fields is.
    colors.card = dark ? blended(text, window, shares.card) : role(QPalette::Base);
    const auto onCard = [&](double share) { return blended(text, colors.card, share); };
    colors.secondary = onCard(shares.secondary);
    colors.cardEdge = blended(text, window, shares.cardEdge);
    colors.separator = onCard(shares.separator);
    colors.field = onCard(shares.field);
    colors.fieldHovered = onCard(shares.fieldHovered);
    colors.fieldPressed = onCard(shares.fieldPressed);
    colors.fieldEdge = onCard(shares.fieldEdge);
    colors.trough = onCard(shares.trough);
    colors.troughEdge = colors.trough;
    colors.off = onCard(shares.off);
    colors.offEdge = onCard(shares.offEdge);
    colors.segment = onCard(shares.segment);
    colors.segmentEdge = onCard(shares.segmentEdge);
    colors.segmentText = text;
    colors.accent = role(QPalette::Highlight);
    colors.accentEdge = blended(QColor(Qt::black), colors.accent, 0.12);
    // White, as long as that can be told from the accent.
    constexpr double kLeastContrast = 1.6;
    colors.knob = QColor(Qt::white);
    if (contrastRatio(colors.knob, colors.accent) < kLeastContrast)
        colors.knob = role(QPalette::HighlightedText);
    colors.offKnob = QColor(Qt::white);
    colors.offKnobEdge = blended(QColor(Qt::black), colors.off, dark ? 0.3 : 0.12);

    if (isHighContrast(palette)) {
        colors.secondary = text;
        colors.card = window;
        colors.field = window;
        colors.trough = window;
        colors.off = window;
        colors.offKnob = text;
        for (QColor* const edge : {&colors.cardEdge, &colors.separator, &colors.fieldEdge, &colors.troughEdge,
                 &colors.offEdge, &colors.accentEdge, &colors.offKnobEdge})
            *edge = text;
        colors.segment = colors.accent;
        colors.segmentEdge = text;
        colors.segmentText = role(QPalette::HighlightedText);
    }
    return colors;
}

bool isHighContrast(const QPalette& palette)
{
    // Black on white has 21; ordinary desktops keep their windows a shade away from it.
    constexpr double kHigh = 20.5;
    return contrastRatio(palette.color(QPalette::Active, QPalette::WindowText),
               palette.color(QPalette::Active, QPalette::Window))
        > kHigh;
}

void drawCentered(QPainter& painter, const QPointF& center, const QImage& image)
{
    const QSizeF size = image.deviceIndependentSize();
    drawOnPixels(painter, center - QPointF(size.width() * 0.5, size.height() * 0.5), image);
}

void drawPlate(QPainter& painter, const QRectF& wanted, double corner, const QColor& fill, const QColor& edge)
{
    const double line = 1.0 / pixelScale(painter);
    const QRectF area = onPixels(painter, wanted);
    painter.setPen(Qt::NoPen);
    painter.setBrush(edge);
    painter.drawRoundedRect(area, corner, corner);
    if (fill == edge)
        return;
    painter.setBrush(fill);
    const double inner = std::max(0.0, corner - line);
    painter.drawRoundedRect(area.adjusted(line, line, -line, -line), inner, inner);
}

void drawFocus(QPainter& painter, const QWidget& control, const QRectF& area, double corner)
{
    const QWidget& window = *control.window();
    if (!control.hasFocus() || !window.isActiveWindow() || !window.testAttribute(Qt::WA_KeyboardFocusChange))
        return;
    const double away = kForm.focusRoom - kForm.focusLine * 0.5;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(control.palette().color(QPalette::Active, QPalette::Highlight), kForm.focusLine));
    painter.drawRoundedRect(area.adjusted(-away, -away, away, away), corner + away, corner + away);
}

} // namespace amperly
