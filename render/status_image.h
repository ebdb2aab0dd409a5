// The status item's picture, as a value: up to three readings and how they are set out. It is
// drawn when somebody needs pixels, at whatever scale, from the StatusArt in force. Making,
// comparing and copying one allocates nothing as long as the values are of ordinary length.
#pragma once

#include "platform/status_picture.h"
#include "render/reading_piece.h"
#include "render/status_layout.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace amperly {

class StatusImage final : public StatusPicture {
public:
    enum class Arrangement : std::uint8_t { Line, Stacked };

    /// How readings are set out.
    struct Setting {
        Arrangement arrangement = Arrangement::Line;
        bool large = false;
        bool compact = false;
        friend bool operator==(const Setting&, const Setting&) = default;
    };

    /// An image without readings, to be filled with add().
    explicit StatusImage(const Setting& setting);

    /// Adds a reading at the end; one more than kMostReadings is a programming error.
    void add(ReadingPiece piece);

    [[nodiscard]] std::span<const ReadingPiece> pieces() const;
    [[nodiscard]] const Setting& setting() const { return m_content.setting; }

    /// Where everything stands.
    [[nodiscard]] StatusLayout layout() const;

    [[nodiscard]] std::uint64_t key() const override;
    [[nodiscard]] double widthPoints() const override;
    [[nodiscard]] double heightPoints() const override;
    void draw(CoverageMask& mask, double scale) const override;
    [[nodiscard]] int readingCount() const override;
    [[nodiscard]] std::string_view readingText(int reading) const override;
    void drawTile(CoverageMask& mask, int reading, int pixels) const override;
    void drawGlyph(CoverageMask& mask, int pixels) const override;

    friend bool operator==(const StatusImage& left, const StatusImage& right)
    {
        return left.m_content == right.m_content;
    }

private:
    struct Content {
        Setting setting;
        std::size_t count = 0;
        std::array<ReadingPiece, kMostReadings> pieces;
        friend bool operator==(const Content&, const Content&) = default;
    };

    [[nodiscard]] StatusLook look() const;

    Content m_content;
};

} // namespace amperly
