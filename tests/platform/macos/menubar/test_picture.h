// A status picture of any size: a full left column, and one pixel at the lower right.
#pragma once

#include "platform/status_picture.h"

#include <cmath>

namespace amperly {

class TestPicture : public StatusPicture {
public:
    explicit TestPicture(double width = 30.0, std::uint64_t key = 1) : m_width(width), m_key(key) { }

    [[nodiscard]] std::uint64_t key() const override { return m_key; }
    [[nodiscard]] double widthPoints() const override { return m_width; }
    [[nodiscard]] double heightPoints() const override { return 22.0; }
    void draw(CoverageMask& mask, double scale) const override
    {
        mask.clear(static_cast<int>(std::ceil(m_width * scale)), static_cast<int>(22.0 * scale));
        for (int y = 0; y < mask.height; ++y)
            mask.coverage[static_cast<std::size_t>(y * mask.width)] = 255;
        mask.coverage.back() = 128;
    }
    [[nodiscard]] int readingCount() const override { return 1; }
    [[nodiscard]] std::string_view readingText(int) const override { return "12.3"; }
    void drawTile(CoverageMask&, int, int) const override { }
    void drawGlyph(CoverageMask&, int) const override { }

private:
    double m_width;
    std::uint64_t m_key;
};

} // namespace amperly
