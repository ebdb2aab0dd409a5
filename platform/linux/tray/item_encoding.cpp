#include "platform/linux/tray/item_encoding.h"

namespace amperly {

namespace {

/// `value` times `part` 255ths, rounded.
std::uint32_t scaled(std::uint32_t value, std::uint32_t part)
{
    return (value * part + 127) / 255;
}

} // namespace

std::size_t pixmapSize(const CoverageMask& mask)
{
    return mask.coverage.size() * 4;
}

void writePixmap(const CoverageMask& mask, Ink ink, PixmapAlpha alpha, std::span<std::uint8_t> bytes)
{
    const std::uint32_t inkAlpha = ink.argb >> 24;
    const std::uint32_t red = (ink.argb >> 16) & 0xff;
    const std::uint32_t green = (ink.argb >> 8) & 0xff;
    const std::uint32_t blue = ink.argb & 0xff;
    std::uint8_t* out = bytes.data();
    for (const std::uint8_t coverage : mask.coverage) {
        const std::uint32_t pixelAlpha = scaled(coverage, inkAlpha);
        // A clear pixel has no colour: a host that takes it for premultiplied would draw it solid.
        const std::uint32_t strength
            = alpha == PixmapAlpha::Premultiplied || pixelAlpha == 0 ? pixelAlpha : 255;
        *out++ = static_cast<std::uint8_t>(pixelAlpha);
        *out++ = static_cast<std::uint8_t>(scaled(red, strength));
        *out++ = static_cast<std::uint8_t>(scaled(green, strength));
        *out++ = static_cast<std::uint8_t>(scaled(blue, strength));
    }
}

std::string asMarkup(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (const char character : text) {
        switch (character) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        default:
            result += character;
        }
    }
    return result;
}

} // namespace amperly
