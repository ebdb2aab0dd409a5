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

/// How far crisp strokes may take a symbol from its size: a chip for larger text shares the drawing of
/// the other size. A master's strokes are two units wide and begin on even units, so they fill whole
/// pixels at multiples of one half pixel per unit only. None but the one that the smaller size takes is
/// near a size for larger text, at any scale, which is why there are masters for that.
constexpr double kCrispTolerance = 0.11;

} // namespace

/// What all symbols have in common that are drawn for one size and weight.
struct GlyphMaster {
    const char* folder = "";
    int GlyphForm::*width = nullptr;
    int boxHeight = 0;
    double unitsPerSize = 0.0; ///< units that the point size has
};

namespace {

constexpr GlyphMaster kRegular{.folder = "",
    .width = &GlyphForm::regularWidth,
    .boxHeight = kRegularBoxHeight,
    .unitsPerSize = kRegularBoxHeight};
constexpr GlyphMaster kMedium{.folder = "medium/",
    .width = &GlyphForm::mediumWidth,
    .boxHeight = kMediumBoxHeight,
    .unitsPerSize = kMediumUnitsPerSize};
constexpr GlyphMaster kLargeRegular{.folder = "large/",
    .width = &GlyphForm::largeRegularWidth,
    .boxHeight = kLargeRegularBoxHeight,
    .unitsPerSize = kLargeRegularSize * 2.0};
constexpr GlyphMaster kLargeMedium{.folder = "medium/large/",
    .width = &GlyphForm::largeMediumWidth,
    .boxHeight = kLargeMediumBoxHeight,
    .unitsPerSize = kLargeMediumSize * 2.0};

const GlyphMaster& masterOf(FontWeight weight)
{
    return weight == FontWeight::Medium ? kMedium : kRegular;
}

const GlyphMaster& masterOf(const GlyphForm& form, const GlyphStyle& style)
{
    const bool medium = style.weight == FontWeight::Medium;
    const GlyphMaster& large = medium ? kLargeMedium : kLargeRegular;
    const bool isLarge = style.pointSize == (medium ? kLargeMediumSize : kLargeRegularSize);
    return isLarge && form.*large.width > 0 ? large : masterOf(style.weight);
}

GlyphDrawing drawn(const GlyphForm& form, const GlyphMaster& master, double pixelsPerUnit)
{
    GlyphDrawing drawing;
    drawing.width = form.*master.width * pixelsPerUnit;
    drawing.height = master.boxHeight * pixelsPerUnit;
    CoverageMask& mask = drawing.mask;
    mask.clear(pixelsUp(drawing.width), pixelsUp(drawing.height));

    QImage image(mask.width, mask.height, QImage::Format_Alpha8);
    image.fill(0);
    {
        QSvgRenderer renderer(QLatin1String(":/amperly/glyphs/") + QLatin1String(master.folder)
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
    const GlyphForm& form = glyphNamed(name);
    const GlyphMaster& master = masterOf(form, style);
    const double unit = style.pointSize / master.unitsPerSize;
    return {.width = form.*master.width * unit, .height = master.boxHeight * unit};
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
    const GlyphForm& form = glyphNamed(name);
    const GlyphMaster& master = masterOf(form, style);
    return drawingOf(form, master, crispPixelsPerUnit(style.pointSize * scale / master.unitsPerSize));
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
    return drawingOf(glyphNamed(name), masterOf(weight), pixelsPerUnit);
}

const GlyphDrawing& GlyphSet::drawingOf(
    const GlyphForm& form, const GlyphMaster& master, double pixelsPerUnit)
{
    const auto known = std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& each) {
        return each.form == &form && each.master == &master && each.pixelsPerUnit == pixelsPerUnit;
    });
    if (known != m_entries.end())
        return known->drawing;
    if (m_entries.size() == kMostEntries)
        m_entries.clear();
    return m_entries
        .emplace_back(Entry{.form = &form,
            .master = &master,
            .pixelsPerUnit = pixelsPerUnit,
            .drawing = drawn(form, master, pixelsPerUnit)})
        .drawing;
}

} // namespace amperly
