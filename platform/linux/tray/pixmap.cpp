#include "platform/linux/tray/pixmap.h"

namespace amperly {

std::size_t pixmapSize(const CoverageMask& mask)
{
    return mask.coverage.size() * 4;
}

void writePixmap(const CoverageMask& mask, Ink ink, std::span<std::uint8_t> bytes)
{
    const std::uint32_t inkAlpha = ink.argb >> 24;
    const auto red = static_cast<std::uint8_t>(ink.argb >> 16);
    const auto green = static_cast<std::uint8_t>(ink.argb >> 8);
    const auto blue = static_cast<std::uint8_t>(ink.argb);
    std::uint8_t* out = bytes.data();
    for (const std::uint8_t coverage : mask.coverage) {
        *out++ = static_cast<std::uint8_t>((coverage * inkAlpha + 127) / 255);
        *out++ = red;
        *out++ = green;
        *out++ = blue;
    }
}

} // namespace amperly
