#include "flow/rolling_text.h"

#include "flow/motion.h"
#include "render/look/pixel_painting.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <cmath>
#include <utility>

namespace amperly {

namespace {

constexpr double kRollSeconds = 0.4;
constexpr double kRise = 0.6; ///< of the line's height: how far a digit moves while it fades
constexpr double kOverhang = 2.0; ///< points around a character's cell, for glyphs that reach beyond it

char32_t firstCodePoint(const QString& character)
{
    const QList<uint> codePoints = character.toUcs4();
    return codePoints.isEmpty() ? U'\0' : codePoints.front();
}

} // namespace

RollingText::RollingText(const QFont& font, double anchor) : m_font(font), m_anchor(anchor) { }

void RollingText::setAnchor(double anchor)
{
    if (anchor == m_anchor)
        return;
    m_anchor = anchor;
    match();
}

void RollingText::setFont(const QFont& font)
{
    if (font == m_font)
        return;
    m_font = font;
    m_glyphs.clear();
    match();
}

void RollingText::setText(const QString& text)
{
    if (text == this->text())
        return;
    // Characters that move come to their end first: from where they are no other movement is smooth.
    if (m_rolling && m_progress > 0.0) {
        m_next = text;
        return;
    }
    m_text = text;
    m_start.reset();
    m_rolling = m_text != m_before;
    m_progress = m_rolling ? 0.0 : 1.0;
    match();
}

bool RollingText::advance(double now)
{
    if (!m_rolling)
        return false;
    if (!m_start)
        m_start = now;
    const double elapsed = now - *m_start;
    if (elapsed >= kRollSeconds) {
        finish();
        if (m_next) {
            setText(*std::exchange(m_next, std::nullopt));
            m_start = now;
        }
        return true;
    }
    const double before = std::exchange(m_progress, easeInOut(elapsed / kRollSeconds));
    return before != m_progress;
}

void RollingText::settle()
{
    m_text = text();
    m_next.reset();
    finish();
}

void RollingText::finish()
{
    m_rolling = false;
    m_progress = 1.0;
    m_before = m_text;
    match();
}

double RollingText::height() const
{
    const QFontMetricsF metrics(m_font);
    return metrics.ascent() + metrics.descent();
}

double RollingText::ascent() const
{
    return QFontMetricsF(m_font).ascent();
}

double RollingText::advanceOf(const QString& character) const
{
    const QFontMetricsF metrics(m_font);
    const char32_t code = firstCodePoint(character);
    const int digit = QChar::digitValue(code);
    if (digit < 0 || QChar::category(code) != QChar::Number_DecimalDigit)
        return metrics.horizontalAdvance(character);
    // As wide as the widest of its ten.
    constexpr char32_t kDigits = 10;
    const char32_t zero = code - static_cast<char32_t>(digit);
    double widest = 0.0;
    for (char32_t one = zero; one < zero + kDigits; ++one)
        widest = std::max(widest, metrics.horizontalAdvance(QString::fromUcs4(&one, 1)));
    return widest;
}

std::vector<RollingText::Positioned> RollingText::laidOut(const QString& text, double& width) const
{
    std::vector<Positioned> positioned;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype start = 0;
    width = 0.0;
    while (finder.toNextBoundary() >= 0) {
        const qsizetype end = finder.position();
        positioned.push_back({text.mid(start, end - start), width});
        width += advanceOf(positioned.back().character);
        start = end;
    }
    return positioned;
}

void RollingText::match()
{
    double widthBefore = 0.0;
    const std::vector<Positioned> before = laidOut(m_before, widthBefore);
    const std::vector<Positioned> after = laidOut(m_text, m_width);
    const double shift = m_anchor * (m_width - widthBefore);
    const std::size_t count = std::max(before.size(), after.size());
    m_cells.assign(count, {});
    // From the end; a character without a counterpart fades where it is.
    for (std::size_t fromEnd = 1; fromEnd <= count; ++fromEnd) {
        RollingCell& cell = m_cells[count - fromEnd];
        if (fromEnd <= before.size()) {
            const Positioned& one = before[before.size() - fromEnd];
            cell.from = one.character;
            cell.fromX = cell.toX = one.x + shift;
        }
        if (fromEnd <= after.size()) {
            const Positioned& one = after[after.size() - fromEnd];
            cell.to = one.character;
            cell.toX = one.x;
            if (fromEnd > before.size())
                cell.fromX = one.x;
        }
    }
}

const QImage& RollingText::glyph(const QString& character, const QColor& color, double scale)
{
    if (color != m_glyphColor || scale != m_glyphScale) {
        m_glyphs.clear();
        m_glyphColor = color;
        m_glyphScale = scale;
    }
    const auto found = std::find_if(
        m_glyphs.begin(), m_glyphs.end(), [&](const Glyph& one) { return one.character == character; });
    if (found != m_glyphs.end())
        return found->picture;

    const double cell = advanceOf(character);
    QImage picture = clearPicture({cell + 2.0 * kOverhang, height() + 2.0 * kOverhang}, scale);
    {
        QPainter painter(&picture);
        painter.setFont(m_font);
        painter.setPen(color);
        const double inset = (cell - QFontMetricsF(m_font).horizontalAdvance(character)) / 2.0;
        const double overhang = onPixels(kOverhang, scale);
        painter.drawText(
            QPointF(overhang + onPixels(inset, scale), overhang + onPixels(ascent(), scale)), character);
    }
    m_glyphs.push_back({character, picture});
    return m_glyphs.back().picture;
}

void RollingText::paintGlyph(QPainter& painter, const QPointF& corner, const QImage& picture, double opacity)
{
    if (opacity <= 0.0)
        return;
    const double before = painter.opacity();
    painter.setOpacity(before * opacity);
    const double overhang = onPixels(kOverhang, m_glyphScale);
    drawOnPixels(painter, corner - QPointF(overhang, overhang), picture);
    painter.setOpacity(before);
}

void RollingText::paint(QPainter& painter, const QPointF& corner, const QColor& color)
{
    const double scale = pixelScale(painter);
    const double rise = kRise * height();
    for (const RollingCell& cell : m_cells) {
        const double left = cell.fromX + (cell.toX - cell.fromX) * m_progress;
        const QPointF at = corner + QPointF(left, 0.0);
        if (cell.from == cell.to) {
            paintGlyph(painter, at, glyph(cell.to, color, scale), 1.0);
            continue;
        }
        if (!cell.from.isEmpty() && m_progress < 1.0)
            paintGlyph(painter, at - QPointF(0.0, rise * m_progress), glyph(cell.from, color, scale),
                1.0 - m_progress);
        if (!cell.to.isEmpty())
            paintGlyph(painter, at + QPointF(0.0, rise * (1.0 - m_progress)), glyph(cell.to, color, scale),
                m_progress);
    }
}

} // namespace amperly
