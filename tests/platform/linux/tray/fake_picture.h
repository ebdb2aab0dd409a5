// A picture whose every pixel says what was drawn: the whole picture, a reading's tile, the glyph.
#pragma once

#include "platform/status_picture.h"

#include <cmath>
#include <string>
#include <vector>

namespace amperly::test {

class FakePicture : public StatusPicture {
public:
    static constexpr std::uint8_t kGlyph = 9;

    /// `readings` are the texts; the coverage of a tile is the length of its reading's text.
    explicit FakePicture(std::vector<std::string> readings) : m_readings(std::move(readings)) { }

    [[nodiscard]] std::uint64_t key() const override
    {
        std::uint64_t key = 0;
        for (const std::string& reading : m_readings) {
            for (const char character : reading)
                key = key * 131 + static_cast<unsigned char>(character);
            key = key * 131 + 1;
        }
        return key;
    }

    [[nodiscard]] double widthPoints() const override { return 40.0 * readingCount(); }
    [[nodiscard]] double heightPoints() const override { return 24.0; }

    void draw(CoverageMask& mask, double scale) const override
    {
        ++drawings;
        mask.clear(static_cast<int>(std::ceil(widthPoints() * scale)),
            static_cast<int>(std::ceil(heightPoints() * scale)));
        fill(mask, 100 + m_readings.front().size());
    }

    [[nodiscard]] int readingCount() const override { return static_cast<int>(m_readings.size()); }

    [[nodiscard]] std::string_view readingText(int reading) const override
    {
        return m_readings[static_cast<std::size_t>(reading)];
    }

    void drawTile(CoverageMask& mask, int reading, int pixels) const override
    {
        ++drawings;
        mask.clear(pixels, pixels);
        fill(mask, readingText(reading).size());
    }

    void drawGlyph(CoverageMask& mask, int pixels) const override
    {
        ++drawings;
        mask.clear(pixels, pixels);
        fill(mask, kGlyph);
    }

    mutable int drawings = 0;

private:
    static void fill(CoverageMask& mask, std::size_t coverage)
    {
        mask.coverage.assign(mask.coverage.size(), static_cast<std::uint8_t>(coverage));
    }

    std::vector<std::string> m_readings;
};

} // namespace amperly::test
