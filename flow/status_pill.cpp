#include "flow/status_pill.h"

#include "flow/paint_color.h"
#include "flow/smooth_shape.h"
#include "render/glyph_set.h"
#include "render/look/pixel_painting.h"
#include "render/look/symbol_image.h"
#include "render/look/text_style.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <limits>

namespace amperly {

namespace {

/// Points, but for the opacity.
struct PillLook {
    double sidePadding = 9.0;
    double topPadding = 4.0;
    double symbolSize = 11.0;
    double symbolGap = 5.0; ///< between symbol and text
    double fill = 0.15;
};
constexpr PillLook kPill;

QFont pillFont()
{
    return textFont(TextStyle::Caption, QFont::Medium);
}

GlyphStyle symbolStyle()
{
    return {.pointSize = kPill.symbolSize, .weight = FontWeight::Medium};
}

} // namespace

StatusPill::StatusPill(QWidget* parent)
    : SpokenText(parent), m_availableWidth(std::numeric_limits<int>::max())
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void StatusPill::setPill(const Pill& pill)
{
    if (pill == m_pill)
        return;
    m_pill = pill;
    say(QString::fromUtf8(pill.text.data(), static_cast<qsizetype>(pill.text.size())));
    breakLines();
}

void StatusPill::setAvailableWidth(int width)
{
    if (width == m_availableWidth)
        return;
    m_availableWidth = width;
    breakLines();
}

double StatusPill::symbolWidth() const
{
    return glyphSize(m_pill.symbol, symbolStyle()).width;
}

double StatusPill::lineHeight() const
{
    const QFontMetricsF metrics(pillFont());
    return metrics.ascent() + metrics.descent();
}

double StatusPill::widthOf(const QStringList& lines) const
{
    const QFontMetricsF metrics(pillFont());
    double width = 0.0;
    for (const QString& line : lines)
        width = std::max(width, metrics.horizontalAdvance(line));
    return std::ceil(2.0 * kPill.sidePadding + symbolWidth() + kPill.symbolGap + width);
}

QStringList StatusPill::inTwoLines(const QString& text) const
{
    // At the dot, which ends the first line as a comma would; else where it gets narrowest.
    const qsizetype dot = text.indexOf(QChar(0x00b7));
    if (dot > 0)
        return {text.left(dot + 1), text.mid(dot + 2)};
    QStringList best{text};
    for (qsizetype space = text.indexOf(u' '); space > 0; space = text.indexOf(u' ', space + 1)) {
        const QStringList lines{text.left(space), text.mid(space + 1)};
        if (widthOf(lines) < widthOf(best))
            best = lines;
    }
    return best;
}

void StatusPill::breakLines()
{
    const QString text = accessibleName();
    QStringList lines{text};
    if (widthOf(lines) > m_availableWidth)
        lines = inTwoLines(text);
    m_lines = lines;
    updateGeometry();
    update();
}

QSize StatusPill::sizeHint() const
{
    const double height = lineHeight() * static_cast<double>(m_lines.size()) + 2.0 * kPill.topPadding;
    return {static_cast<int>(widthOf(m_lines)), static_cast<int>(std::ceil(height))};
}

void StatusPill::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double scale = pixelScale(painter);
    const QColor color = paintColor(m_pill.color);
    const QRectF area = rect();
    painter.fillPath(smoothRectangle(area, area.height() / 2.0), paintColor(m_pill.color, kPill.fill));

    const QImage symbol = symbolImage(m_pill.symbol, symbolStyle(), color, scale);
    const QSizeF size = symbol.deviceIndependentSize();
    const bool fromRight = layoutDirection() == Qt::RightToLeft;
    const double symbolLeft = fromRight ? area.width() - kPill.sidePadding - size.width() : kPill.sidePadding;
    drawOnPixels(painter, {symbolLeft, (area.height() - size.height()) / 2.0}, symbol);

    const QFont font = pillFont();
    const QFontMetricsF metrics(font);
    const double start = kPill.sidePadding + symbolWidth() + kPill.symbolGap;
    const double top = (area.height() - lineHeight() * static_cast<double>(m_lines.size())) / 2.0;
    painter.setFont(font);
    painter.setPen(color);
    for (qsizetype line = 0; line < m_lines.size(); ++line) {
        const double left
            = fromRight ? area.width() - start - metrics.horizontalAdvance(m_lines[line]) : start;
        const double baseline = top + lineHeight() * static_cast<double>(line) + metrics.ascent();
        painter.drawText(QPointF(onPixels(left, scale), onPixels(baseline, scale)), m_lines[line]);
    }
}

void StatusPill::changeEvent(QEvent* event)
{
    SpokenText::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::ApplicationFontChange)
        breakLines();
}

} // namespace amperly
