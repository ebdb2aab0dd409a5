#include "tools/gallery_sheet.h"

#include <algorithm>

namespace amperly {
namespace {

constexpr int kMargin = 20;
constexpr int kBetween = 12;
constexpr int kCaptionHeight = 16;
constexpr int kHeadingHeight = 34;
constexpr int kPad = 8; ///< of a strip, left and right of the picture
constexpr double kCaptionSize = 10.0;
constexpr double kHeadingSize = 14.0;
const QColor kPaper(0xff, 0xff, 0xff);
const QColor kCaptionInk(0x70, 0x70, 0x76);
const QColor kHeadingInk(0x20, 0x20, 0x24);

int mixed(int below, int above, int coverage)
{
    return (below * (255 - coverage) + above * coverage + 127) / 255;
}

} // namespace

void layInk(QImage& image, const CoverageMask& mask, int left, int top, const QColor& ink, int zoom)
{
    for (int y = 0; y < mask.height * zoom; ++y) {
        for (int x = 0; x < mask.width * zoom; ++x) {
            const int coverage = mask.at(x / zoom, y / zoom);
            if (coverage == 0 || !image.valid(left + x, top + y))
                continue;
            const QRgb below = image.pixel(left + x, top + y);
            image.setPixel(left + x, top + y,
                qRgb(mixed(qRed(below), ink.red(), coverage), mixed(qGreen(below), ink.green(), coverage),
                    mixed(qBlue(below), ink.blue(), coverage)));
        }
    }
}

GallerySheet::GallerySheet(int width, TextMasks& text)
    : m_text(text), m_image(width, 1, QImage::Format_RGB32), m_left(kMargin), m_top(kMargin)
{
    m_image.fill(kPaper);
}

void GallerySheet::makeRoom(int height)
{
    if (height <= m_image.height())
        return;
    QImage larger(m_image.width(), height, QImage::Format_RGB32);
    larger.fill(kPaper);
    for (int row = 0; row < m_image.height(); ++row)
        std::copy_n(m_image.constScanLine(row), m_image.bytesPerLine(), larger.scanLine(row));
    m_image = larger;
}

void GallerySheet::caption(std::string_view words, int left, int top, const QColor& colour, double pointSize)
{
    const TextMaskStyle style{.pointSize = pointSize, .weight = FontWeight::Regular};
    CoverageMask mask;
    mask.clear(static_cast<int>(m_text.width(words, style)) + 1, kCaptionHeight);
    m_text.draw(mask, words, style, {.left = 0.0, .middle = kCaptionHeight * 0.5}, 1.0);
    layInk(m_image, mask, left, top, colour);
}

void GallerySheet::heading(std::string_view title)
{
    newRow();
    makeRoom(m_top + kHeadingHeight);
    caption(title, kMargin, m_top + kHeadingHeight - kCaptionHeight - 6, kHeadingInk, kHeadingSize);
    m_top += kHeadingHeight;
}

void GallerySheet::strip(
    const CoverageMask& mask, const PanelColours& colours, std::string_view words, int zoom)
{
    const int width = (mask.width + 2 * kPad) * zoom;
    const int height = mask.height * zoom;
    const int captionWidth
        = static_cast<int>(m_text.width(words, {.pointSize = kCaptionSize, .weight = FontWeight::Regular}));
    if (m_left > kMargin && m_left + std::max(width, captionWidth) > m_image.width() - kMargin)
        newRow();
    makeRoom(m_top + height + kCaptionHeight + kBetween);
    for (int y = 0; y < height; ++y)
        std::fill_n(reinterpret_cast<QRgb*>(m_image.scanLine(m_top + y)) + m_left,
            std::min(width, m_image.width() - m_left), colours.panel.rgb());
    layInk(m_image, mask, m_left + kPad * zoom, m_top, colours.ink, zoom);
    caption(words, m_left, m_top + height + 1, kCaptionInk, kCaptionSize);
    m_left += std::max(width, captionWidth) + kBetween;
    m_rowHeight = std::max(m_rowHeight, height + kCaptionHeight);
}

void GallerySheet::newRow()
{
    if (m_left == kMargin)
        return;
    m_left = kMargin;
    m_top += m_rowHeight + kBetween;
    m_rowHeight = 0;
}

bool GallerySheet::save(const QString& path)
{
    newRow();
    makeRoom(m_top + kMargin);
    return m_image.save(path);
}

} // namespace amperly
