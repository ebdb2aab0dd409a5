#include "bench/drawing_status_item.h"

#include <utility>

namespace amperly {

namespace {

constexpr int kTilePoints = 22;

} // namespace

void DrawingStatusItem::show(
    const StatusPicture& picture, std::optional<std::string_view> toolTip, std::string_view spokenLabel)
{
    const std::uint64_t key = picture.key();
    const bool samePicture = m_key == key;
    if (samePicture && m_toolTip == toolTip && m_spokenLabel == spokenLabel)
        return;
    ++m_changes;
    m_toolTip = toolTip;
    m_spokenLabel = spokenLabel;
    m_key = key;
    if (!samePicture)
        drawAll(picture);
}

void DrawingStatusItem::drawAll(const StatusPicture& picture)
{
    std::size_t count = 0;
    // What was shown is compared with what was drawn, as the real item does before it says so.
    const auto add = [this, &count](auto draw) {
        if (m_shown.size() == count)
            m_shown.emplace_back();
        draw(m_scratch);
        CoverageMask& shown = m_shown[count++];
        if (shown != m_scratch)
            std::swap(shown, m_scratch);
    };
    switch (m_panel) {
    case Panel::Plain:
        add([&](CoverageMask& mask) { picture.draw(mask, 1.0); });
        break;
    case Panel::Wide:
        for (const int scale : {1, 2}) {
            add([&](CoverageMask& mask) { picture.draw(mask, scale); });
            add([&](CoverageMask& mask) { picture.drawTile(mask, 0, scale * kTilePoints); });
        }
        break;
    case Panel::Tiles:
        for (int reading = 0; reading < picture.readingCount(); ++reading)
            add([&](CoverageMask& mask) { picture.drawTile(mask, reading, kTilePoints); });
        break;
    }
}

} // namespace amperly
