#include "render/status_image.h"

#include "render/blit.h"
#include "render/pixel_grid.h"
#include "render/status_art.h"
#include "render/status_tile.h"

#include <cstdlib>
#include <utility>

namespace amperly {
namespace {

/// FNV-1a, 64 bits wide.
class KeyHash {
public:
    void add(std::string_view bytes)
    {
        for (const char byte : bytes)
            addByte(static_cast<std::uint8_t>(byte));
        addByte(kEnd); // no byte of UTF-8: "a", "bc" is not "ab", "c"
    }

    void addByte(std::uint8_t byte) { m_hash = (m_hash ^ byte) * 0x100000001b3U; }

    [[nodiscard]] std::uint64_t value() const { return m_hash; }

private:
    static constexpr std::uint8_t kEnd = 0xff;
    std::uint64_t m_hash = 0xcbf29ce484222325U;
};

PieceSize sizeOf(const ReadingPiece& piece, const StatusLook& look, StatusArt& art)
{
    PieceSize size;
    size.hasGlyph = !piece.symbol.empty();
    if (size.hasGlyph)
        size.glyph = glyphSize(piece.symbol, look.glyph);
    size.hasText = !piece.text.empty();
    if (size.hasText)
        size.text = {.width = art.text.width(piece.text, look.text), .height = art.text.height(look.text)};
    return size;
}

std::array<PieceSize, kMostReadings> sizesOf(
    std::span<const ReadingPiece> pieces, const StatusLook& look, StatusArt& art)
{
    std::array<PieceSize, kMostReadings> sizes{};
    for (std::size_t index = 0; index < pieces.size(); ++index)
        sizes[index] = sizeOf(pieces[index], look, art);
    return sizes;
}

StatusLayout layoutOf(StatusImage::Arrangement arrangement, std::span<const PieceSize> sizes,
    const StatusLook& look, double height)
{
    return arrangement == StatusImage::Arrangement::Stacked ? stackedLayout(sizes, look, height)
                                                            : lineLayout(sizes, look, height);
}

} // namespace

StatusImage::StatusImage(const Setting& setting) : m_content{.setting = setting, .count = 0, .pieces = {}} { }

void StatusImage::add(ReadingPiece piece)
{
    if (m_content.count == kMostReadings)
        std::abort();
    m_content.pieces[m_content.count++] = std::move(piece);
}

std::span<const ReadingPiece> StatusImage::pieces() const
{
    return {m_content.pieces.data(), m_content.count};
}

StatusLook StatusImage::look() const
{
    const auto& [arrangement, large, compact] = m_content.setting;
    return arrangement == Arrangement::Stacked ? stackedLook(large, compact) : lineLook(large, compact);
}

StatusLayout StatusImage::layout() const
{
    StatusArt& art = StatusArt::current();
    const auto sizes = sizesOf(pieces(), look(), art);
    return layoutOf(m_content.setting.arrangement, {sizes.data(), m_content.count}, look(), art.barHeight);
}

std::uint64_t StatusImage::key() const
{
    KeyHash hash;
    hash.addByte(static_cast<std::uint8_t>(m_content.setting.arrangement));
    hash.addByte(m_content.setting.large ? 1 : 0);
    hash.addByte(m_content.setting.compact ? 1 : 0);
    for (const ReadingPiece& piece : pieces()) {
        hash.add(piece.symbol);
        hash.add(piece.text);
        hash.add(piece.wholeText);
    }
    return hash.value();
}

double StatusImage::widthPoints() const
{
    return layout().width;
}

double StatusImage::heightPoints() const
{
    return StatusArt::current().barHeight;
}

void StatusImage::draw(CoverageMask& mask, double scale) const
{
    StatusArt& art = StatusArt::current();
    const StatusLook look = this->look();
    const auto sizes = sizesOf(pieces(), look, art);
    const double height = art.barHeight;
    const StatusLayout layout
        = layoutOf(m_content.setting.arrangement, {sizes.data(), m_content.count}, look, height);
    mask.clear(pixelsUp(layout.width * scale), pixelsUp(height * scale));

    for (std::size_t index = 0; index < m_content.count; ++index) {
        const ReadingPiece& piece = m_content.pieces[index];
        const PieceSize& size = sizes[index];
        const PiecePlace& place = layout.places[index];
        if (size.hasGlyph) {
            const GlyphDrawing& glyph = art.glyphs.drawing(piece.symbol, look.glyph, scale);
            const double middleX = place.glyphX + size.glyph.width * 0.5;
            const double middleY = height - place.glyphY - size.glyph.height * 0.5;
            blitInside(mask, viewOf(glyph.mask), nearestPixel(middleX * scale - glyph.width * 0.5),
                nearestPixel(middleY * scale - glyph.height * 0.5));
        }
        if (size.hasText) {
            const double middle = height - place.textY - size.text.height * 0.5;
            art.text.draw(mask, piece.text, look.text, {.left = place.textX, .middle = middle}, scale);
        }
    }
}

int StatusImage::readingCount() const
{
    return static_cast<int>(m_content.count);
}

std::string_view StatusImage::readingText(int reading) const
{
    return pieces()[static_cast<std::size_t>(reading)].text;
}

void StatusImage::drawTile(CoverageMask& mask, int reading, int pixels) const
{
    drawReadingTile(mask, pieces()[static_cast<std::size_t>(reading)], pixels, StatusArt::current());
}

void StatusImage::drawGlyph(CoverageMask& mask, int pixels) const
{
    const std::string_view symbol = pieces().empty() ? std::string_view{} : pieces().front().symbol;
    drawGlyphTile(mask, symbol.empty() ? kFallbackGlyph : symbol, pixels, StatusArt::current());
}

} // namespace amperly
