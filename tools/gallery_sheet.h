// A contact sheet: masks set out in rows on strips that look like a panel, with captions.
#pragma once

#include "platform/coverage_mask.h"
#include "render/text_masks.h"

#include <QColor>
#include <QImage>
#include <QString>
#include <string_view>

namespace amperly {

/// A panel's colour and the ink that stands on it.
struct PanelColours {
    QColor panel;
    QColor ink;
};

inline const PanelColours kLightPanel{QColor(0xf2, 0xf2, 0xf4), QColor(0x1d, 0x1d, 0x1f)};
inline const PanelColours kDarkPanel{QColor(0x1e, 0x20, 0x24), QColor(0xff, 0xff, 0xff)};

class GallerySheet {
public:
    /// `text` draws the captions.
    GallerySheet(int width, TextMasks& text);

    /// Starts a new row under a heading.
    void heading(std::string_view title);

    /// Puts a strip of `colours` with `mask` in the row, in pixels `zoom` times as large.
    void strip(const CoverageMask& mask, const PanelColours& colours, std::string_view caption, int zoom = 1);

    /// Ends the row.
    void newRow();

    /// Writes the sheet as a PNG file, as high as it has become.
    [[nodiscard]] bool save(const QString& path);

private:
    void makeRoom(int height);
    void caption(std::string_view words, int left, int top, const QColor& colour, double pointSize);

    TextMasks& m_text;
    QImage m_image;
    int m_left = 0;
    int m_top = 0;
    int m_rowHeight = 0;
};

/// Lays `mask` in `ink` onto `image`, each of its pixels as a square of `zoom`.
void layInk(QImage& image, const CoverageMask& mask, int left, int top, const QColor& ink, int zoom = 1);

} // namespace amperly
