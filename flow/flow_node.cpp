#include "flow/flow_node.h"

#include "flow/diagram_layout.h"
#include "flow/motion.h"
#include "flow/node_glow.h"
#include "flow/node_look.h"
#include "flow/paint_color.h"
#include "flow/smooth_shape.h"
#include "render/look/pixel_painting.h"
#include "render/look/symbol_image.h"
#include "render/look/text_style.h"
#include "render/look/window_colors.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace amperly {

namespace {

constexpr double kCentred = 0.5;

QFont valueFont()
{
    return figureFont(TextStyle::Callout, QFont::DemiBold);
}

QColor valueColor(const QPalette& palette)
{
    return palette.color(QPalette::Active, QPalette::WindowText);
}

QColor white(double opacity)
{
    return QColor::fromRgbF(1.0F, 1.0F, 1.0F, static_cast<float>(opacity));
}

double lineHeight(const QFont& font)
{
    const QFontMetricsF metrics(font);
    return metrics.ascent() + metrics.descent();
}

/// The title's font, made smaller until the text fits in.
QFont fittingTitleFont(const QString& title, double width)
{
    constexpr int kSmallest = 8;
    QFont font = textFont(TextStyle::Caption2);
    while (font.pixelSize() > kSmallest && QFontMetricsF(font).horizontalAdvance(title) > width)
        font.setPixelSize(font.pixelSize() - 1);
    return font;
}

/// Where the column of symbol, value and title begins.
double columnTop()
{
    const double column = kNodeLook.symbolHeight + lineHeight(valueFont())
        + lineHeight(textFont(TextStyle::Caption2)) + 2.0 * kNodeLook.spacing;
    return (kNodeHeight - column) / 2.0;
}

} // namespace

FlowNode::FlowNode(const NodeContent& content, const DisplaySettings& display)
    : m_content(content), m_display(display), m_value(valueFont(), kCentred)
{
    m_value.setText(QString::fromStdString(content.value));
    m_value.settle();
}

void FlowNode::setContent(const NodeContent& content)
{
    if (content == m_content)
        return;
    if (content.tint != m_content.tint)
        m_glow = {};
    // Mostly it is the value alone, which is not part of the body.
    NodeContent before = m_content;
    before.value = content.value;
    if (before != content)
        m_body = {};
    m_content = content;
    m_value.setText(QString::fromStdString(content.value));
    m_whole = {};
}

void FlowNode::advance(double now)
{
    if (m_value.advance(now))
        m_whole = {};
}

void FlowNode::settle()
{
    if (!m_value.isRolling())
        return;
    m_value.settle();
    m_whole = {};
}

void FlowNode::restyle()
{
    m_value.setFont(valueFont());
    m_body = {};
    m_whole = {};
}

double FlowNode::glowOpacity(double elapsed) const
{
    if (!m_content.active)
        return kNodeLook.glowInactive;
    const double breath = breathe(elapsed, kNodeLook.breathSeconds);
    return kNodeLook.glowDim + (kNodeLook.glowBright - kNodeLook.glowDim) * breath;
}

QPointF FlowNode::valueCorner() const
{
    return {(kNodeWidth - m_value.width()) / 2.0, columnTop() + kNodeLook.symbolHeight + kNodeLook.spacing};
}

void FlowNode::drawSheet(QPainter& painter, const QPalette& palette) const
{
    const bool active = m_content.active;
    const auto tinted = [&](double opacity) { return paintColor(m_content.tint, opacity); };
    // All edges on whole pixels, whatever the scale.
    const double scale = pixelScale(painter);
    const QRectF outer(0.0, 0.0, onPixels(kNodeWidth, scale), onPixels(kNodeHeight, scale));
    const double line = std::max(1.0, std::round(kNodeLook.borderWidth * scale)) / scale;
    const QPainterPath shape = smoothRectangle(outer, kNodeLook.corner);

    painter.setPen(Qt::NoPen);
    painter.fillPath(shape, white(isDark(palette) ? kNodeLook.materialOnDark : kNodeLook.materialOnLight));
    painter.fillPath(shape, tinted(kNodeLook.tint.of(active)));
    QLinearGradient gloss(outer.topLeft(), outer.bottomLeft());
    gloss.setColorAt(0.0, white(kNodeLook.gloss));
    gloss.setColorAt(0.5, white(0.0));
    painter.fillPath(shape, gloss);

    QLinearGradient border(outer.topLeft(), outer.bottomRight());
    border.setColorAt(0.0, white(kNodeLook.borderWhite.of(active)));
    border.setColorAt(0.5, tinted(kNodeLook.borderTint.of(active)));
    border.setColorAt(1.0, tinted(kNodeLook.borderEnd.of(active)));
    const double half = line / 2.0;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(border, line));
    painter.drawPath(smoothRectangle(outer.adjusted(half, half, -half, -half), kNodeLook.corner - half));
}

void FlowNode::drawSymbol(QPainter& painter, const QPalette& palette) const
{
    const QColor color = m_content.active ? paintColor(m_content.tint) : secondaryColor(palette, m_display);
    const QImage symbol = symbolImage(m_content.symbol,
        {.pointSize = kNodeLook.symbolSize, .weight = FontWeight::Medium}, color, pixelScale(painter));
    const QSizeF size = symbol.deviceIndependentSize();
    drawOnPixels(painter,
        {(kNodeWidth - size.width()) / 2.0, columnTop() + (kNodeLook.symbolHeight - size.height()) / 2.0},
        symbol);
}

void FlowNode::drawTitle(QPainter& painter, const QPalette& palette) const
{
    const double scale = pixelScale(painter);
    const double width = kNodeWidth - 2.0 * kNodeLook.sidePadding;
    const QString full = QString::fromStdString(m_content.title);
    const QFont font = fittingTitleFont(full, width);
    const QFontMetricsF metrics(font);
    const QString title = metrics.elidedText(full, Qt::ElideRight, width);
    const double baseline = valueCorner().y() + m_value.height() + kNodeLook.spacing
        + QFontMetricsF(textFont(TextStyle::Caption2)).ascent();
    painter.setFont(font);
    painter.setPen(secondaryColor(palette, m_display));
    painter.drawText(QPointF(onPixels((kNodeWidth - metrics.horizontalAdvance(title)) / 2.0, scale),
                         onPixels(baseline, scale)),
        title);
}

void FlowNode::draw(const QPalette& palette, double scale)
{
    if (std::exchange(m_scale, scale) != scale)
        m_glow = m_body = m_whole = {};
    if (m_glow.isNull())
        m_glow = nodeGlow(paintColor(m_content.tint), scale);
    if (m_body.isNull()) {
        m_body = clearPicture({kNodeWidth, kNodeHeight}, scale);
        QPainter painter(&m_body);
        painter.setRenderHint(QPainter::Antialiasing);
        drawSheet(painter, palette);
        drawSymbol(painter, palette);
        drawTitle(painter, palette);
        m_whole = {};
    }
    if (m_whole.isNull()) {
        // Rolling or not, the value is laid onto the node: over the diagram itself it would be
        // rounded to other pixels, and be seen through twice where the node is.
        m_whole = m_body;
        QPainter painter(&m_whole);
        m_value.paint(painter, valueCorner(), valueColor(palette));
    }
}

void FlowNode::paint(QPainter& painter, const QPointF& corner, const QPalette& palette, double glow)
{
    const double scale = pixelScale(painter);
    draw(palette, scale);

    const double before = painter.opacity();
    const double opacity = before * kNodeLook.opacity.of(m_content.active);
    painter.setOpacity(opacity * glow);
    drawOnPixels(painter, corner - QPointF(kNodeLook.glowReach, kNodeLook.glowReach), m_glow);
    painter.setOpacity(opacity);
    drawOnPixels(painter, corner, m_whole);
    painter.setOpacity(before);
}

} // namespace amperly
