// A picture whose ink is a block in the middle of a bar 24 points high, and whose tile and glyph
// are told from it by how much they cover.
#pragma once

#include "platform/status_picture.h"

#include <cmath>
#include <cstdint>
#include <string_view>

namespace amperly::test {

class BlockPicture : public StatusPicture {
public:
    static constexpr std::uint8_t kWide = 255;
    static constexpr std::uint8_t kTile = 128;
    static constexpr std::uint8_t kGlyph = 64;

    explicit BlockPicture(double width, double inkHeight = 14.0) : m_width(width), m_inkHeight(inkHeight) { }

    [[nodiscard]] std::uint64_t key() const override { return static_cast<std::uint64_t>(m_width); }

    [[nodiscard]] double widthPoints() const override { return m_width; }
    [[nodiscard]] double heightPoints() const override { return 24.0; }

    void draw(CoverageMask& mask, double scale) const override
    {
        mask.clear(static_cast<int>(std::ceil(m_width * scale)), static_cast<int>(std::ceil(24.0 * scale)));
        const int inkRows = static_cast<int>(std::floor(m_inkHeight * scale));
        const int first = (mask.height - inkRows) / 2;
        for (int row = first; row < first + inkRows; ++row) {
            for (int column = 0; column < mask.width; ++column)
                mask.coverage[static_cast<std::size_t>(row * mask.width + column)] = kWide;
        }
    }

    [[nodiscard]] int readingCount() const override { return 1; }
    [[nodiscard]] std::string_view readingText(int) const override { return "12"; }
    void drawTile(CoverageMask& mask, int, int pixels) const override { fill(mask, pixels, kTile); }
    void drawGlyph(CoverageMask& mask, int pixels) const override { fill(mask, pixels, kGlyph); }

private:
    static void fill(CoverageMask& mask, int pixels, std::uint8_t coverage)
    {
        mask.clear(pixels, pixels);
        mask.coverage.assign(mask.coverage.size(), coverage);
    }

    double m_width;
    double m_inkHeight;
};

} // namespace amperly::test
