#include "render/glyph_set.h"

#include "render/pixel_grid.h"
#include "render/system_symbols.h"

#include <QImage>
#include <QLatin1String>
#include <QPainter>
#include <QString>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace amperly {
namespace {

/// Symbols kept. A run shows some ten: the states of one battery and two others, at two scales.
constexpr std::size_t kMostEntries = 64;

/// How far crisp strokes may take a symbol from its size. 14 points then share the drawing of
/// 13 points, and 10.5 that of 9.5.
constexpr double kCrispTolerance = 0.11;

int boxWidth(const GlyphForm& form, FontWeight weight)
{
    return weight == FontWeight::Medium ? form.mediumWidth : form.regularWidth;
}

int boxHeight(FontWeight weight)
{
    return weight == FontWeight::Medium ? kMediumBoxHeight : kRegularBoxHeight;
}

/// Points per unit of the master's grid.
double pointsPerUnit(const GlyphStyle& style)
{
    return style.pointSize / (style.weight == FontWeight::Medium ? kMediumUnitsPerSize : kRegularBoxHeight);
}

GlyphDrawing drawn(const GlyphForm& form, FontWeight weight, double pixelsPerUnit)
{
    GlyphDrawing drawing;
    drawing.width = boxWidth(form, weight) * pixelsPerUnit;
    drawing.height = boxHeight(weight) * pixelsPerUnit;
    CoverageMask& mask = drawing.mask;
    mask.clear(pixelsUp(drawing.width), pixelsUp(drawing.height));

    QImage image(mask.width, mask.height, QImage::Format_Alpha8);
    image.fill(0);
    {
        QSvgRenderer renderer(QLatin1String(":/amperly/glyphs/")
            + QLatin1String(weight == FontWeight::Medium ? "medium/" : "")
            + QLatin1String(form.name.data(), static_cast<qsizetype>(form.name.size()))
            + QLatin1String(".svg"));
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        renderer.render(&painter, QRectF(0.0, 0.0, drawing.width, drawing.height));
    }
    for (int row = 0; row < mask.height; ++row)
        std::copy_n(image.constScanLine(row), mask.width, mask.coverage.begin() + row * mask.width);
    return drawing;
}

} // namespace

const GlyphForm& glyphNamed(std::string_view name)
{
    const auto find = [](std::string_view wanted) {
        return std::find_if(kGlyphForms.begin(), kGlyphForms.end(),
            [&](const GlyphForm& form) { return form.name == wanted; });
    };
    const auto found = find(name);
    return found != kGlyphForms.end() ? *found : *find(kFallbackGlyph);
}

GlyphSize glyphSize(std::string_view name, const GlyphStyle& style)
{
    if (const std::optional<GlyphSize> size = systemSymbolSize(name, style))
        return *size;
    const double unit = pointsPerUnit(style);
    return {
        .width = boxWidth(glyphNamed(name), style.weight) * unit, .height = boxHeight(style.weight) * unit};
}

double crispPixelsPerUnit(double pixelsPerUnit)
{
    const double crisp = std::round(pixelsPerUnit * 2.0) * 0.5;
    return std::abs(crisp - pixelsPerUnit) <= kCrispTolerance * pixelsPerUnit ? crisp : pixelsPerUnit;
}

const GlyphDrawing& GlyphSet::drawing(std::string_view name, const GlyphStyle& style, double scale)
{
    if (const GlyphDrawing* const own = systemDrawing(name, style, scale))
        return *own;
    return drawingPerUnit(name, style.weight, crispPixelsPerUnit(pointsPerUnit(style) * scale));
}

const GlyphDrawing* GlyphSet::systemDrawing(std::string_view name, const GlyphStyle& style, double scale)
{
    const auto known
        = std::find_if(m_systemEntries.begin(), m_systemEntries.end(), [&](const SystemEntry& each) {
              return each.name == name && each.style == style && each.scale == scale;
          });
    if (known != m_systemEntries.end())
        return &known->drawing;
    std::optional<GlyphDrawing> drawn = drawSystemSymbol(name, style, scale);
    if (!drawn)
        return nullptr;
    if (m_systemEntries.size() == kMostEntries)
        m_systemEntries.clear();
    return &m_systemEntries
                .emplace_back(SystemEntry{
                    .name = std::string(name), .style = style, .scale = scale, .drawing = std::move(*drawn)})
                .drawing;
}

const GlyphDrawing& GlyphSet::drawingPerUnit(std::string_view name, FontWeight weight, double pixelsPerUnit)
{
    const GlyphForm* form = &glyphNamed(name);
    const auto known = std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& each) {
        return each.form == form && each.weight == weight && each.pixelsPerUnit == pixelsPerUnit;
    });
    if (known != m_entries.end())
        return known->drawing;
    if (m_entries.size() == kMostEntries)
        m_entries.clear();
    return m_entries
        .emplace_back(Entry{.form = form,
            .weight = weight,
            .pixelsPerUnit = pixelsPerUnit,
            .drawing = drawn(*form, weight, pixelsPerUnit)})
        .drawing;
}

} // namespace amperly
