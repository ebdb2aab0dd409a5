#include "platform/linux/tray/item_row.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace amperly {

namespace {

/// The side of a tray icon at scale 1. Hosts show a picture of just their size unscaled.
constexpr int kTilePoints = 22;

/// The side of an icon with a label at scale 1.
constexpr int kGlyphPoints = 16;

/// Between two readings in a label.
constexpr std::string_view kLabelSeparator = " \u00b7 ";

void drawInto(StatusNotifierItem& item, std::size_t index, CoverageMask& scratch, auto draw)
{
    draw(scratch);
    item.setPixmap(index, scratch);
}

} // namespace

ItemRow::ItemRow(const HostProfile& profile, std::string busAddress, ExportedMenu menu)
    : m_profile(profile), m_busAddress(std::move(busAddress)), m_menu(std::move(menu))
{
}

std::shared_ptr<ItemRow::Link> ItemRow::openLink()
{
    auto link = std::make_shared<Link>();
    link->connection = BusConnection::open(m_busAddress);
    if (!link->connection)
        return nullptr;
    if (m_menu.menu) {
        link->menu
            = std::make_unique<DbusMenu>(*link->connection, *m_menu.menu, *m_menu.opening, m_menu.leading);
    }
    link->connection->onClosed([this] {
        if (m_closedHandler)
            m_closedHandler();
    });
    return link;
}

ItemRow::RowItem ItemRow::openItem()
{
    RowItem entry;
    std::string path = StatusNotifierItem::kPath;
    if (m_profile.takesSeveralOfAConnection && !m_items.empty()) {
        entry.link = m_items.front().link;
        path += '/' + std::to_string(m_items.size() + 1);
    } else {
        entry.link = openLink();
    }
    if (!entry.link)
        return entry;
    entry.item = std::make_unique<StatusNotifierItem>(
        *entry.link->connection, m_profile, std::move(path), m_menu.menu ? DbusMenu::kPath : "");
    entry.item->onClick([this](const StatusClick& click) {
        if (m_clickHandler)
            m_clickHandler(click);
    });
    entry.item->onActivationToken([this](const std::string& token) {
        if (m_tokenHandler)
            m_tokenHandler(token);
    });
    if (m_profile.sortsByTitle && !m_items.empty())
        entry.item->setTitle("Amperly " + std::to_string(m_items.size() + 1));
    entry.item->setTexts(m_toolTip, m_spokenLabel);
    return entry;
}

void ItemRow::resize(std::size_t count)
{
    // From the end, where the order of the others does not depend on it: the reading that an item
    // shows follows from its position.
    if (m_profile.takesSeveralOfAConnection)
        hideBeyond(count);
    else
        closeBeyond(count);
    while (m_items.size() < count) {
        RowItem entry = openItem();
        if (!entry.link)
            break;
        m_items.push_back(std::move(entry));
    }
    m_count = std::min(count, m_items.size());
}

void ItemRow::hideBeyond(std::size_t count)
{
    // Hosts take an item for gone when its connection is, and the others still need that.
    for (std::size_t index = 0; index < m_items.size(); ++index)
        m_items[index].item->setShown(index < count);
}

void ItemRow::closeBeyond(std::size_t count)
{
    while (m_items.size() > count) {
        m_items.back().item->forgetWatcher();
        m_retired.push_back(std::move(m_items.back()));
        m_items.pop_back();
        if (m_retired.size() == 1)
            QMetaObject::invokeMethod(
                &m_context, [this] { m_retired.clear(); }, Qt::QueuedConnection);
    }
}

void ItemRow::showPicture(const StatusPicture& picture, double scale, Ink ink)
{
    m_ink = ink;
    resize(m_profile.drawing == ItemDrawing::Tiles ? static_cast<std::size_t>(picture.readingCount()) : 1);
    setInk(ink);
    switch (m_profile.drawing) {
    case ItemDrawing::Wide:
        drawWide(picture, scale);
        break;
    case ItemDrawing::Tiles:
        drawTiles(picture, scale);
        break;
    case ItemDrawing::Labelled:
        drawLabelled(picture);
        break;
    }
    registerNext();
}

void ItemRow::drawWide(const StatusPicture& picture, double scale)
{
    // The wide ones first: hosts for squares find a square further on.
    for (RowItem& entry : m_items) {
        StatusNotifierItem& item = *entry.item;
        if (m_profile.takesLargestPixmap) {
            item.setPixmapCount(1);
            drawInto(item, 0, m_scratch, [&](CoverageMask& mask) { picture.draw(mask, std::ceil(scale)); });
            continue;
        }
        item.setPixmapCount(4);
        drawInto(item, 0, m_scratch, [&](CoverageMask& mask) { picture.draw(mask, 1.0); });
        drawInto(item, 1, m_scratch, [&](CoverageMask& mask) { picture.draw(mask, 2.0); });
        drawInto(item, 2, m_scratch, [&](CoverageMask& mask) { picture.drawTile(mask, 0, kTilePoints); });
        drawInto(item, 3, m_scratch, [&](CoverageMask& mask) { picture.drawTile(mask, 0, 2 * kTilePoints); });
    }
}

void ItemRow::drawTiles(const StatusPicture& picture, double scale)
{
    const int exact = static_cast<int>(std::lround(kTilePoints * scale));
    m_sizes.assign({exact});
    if (!m_profile.takesLargestPixmap) {
        for (const int other : {kTilePoints, 2 * kTilePoints}) {
            if (other != exact)
                m_sizes.push_back(other);
        }
    }
    const int last = static_cast<int>(m_count) - 1;
    for (int index = 0; index <= last; ++index) {
        const int reading = m_profile.lastRegisteredFirst ? last - index : index;
        StatusNotifierItem& item = *m_items[static_cast<std::size_t>(index)].item;
        item.setPixmapCount(m_sizes.size());
        for (std::size_t size = 0; size < m_sizes.size(); ++size) {
            drawInto(item, size, m_scratch,
                [&](CoverageMask& mask) { picture.drawTile(mask, reading, m_sizes[size]); });
        }
    }
}

void ItemRow::drawLabelled(const StatusPicture& picture)
{
    m_label.clear();
    for (int reading = 0; reading < picture.readingCount(); ++reading) {
        const std::string_view text = picture.readingText(reading);
        if (!text.empty() && !m_label.empty())
            m_label += kLabelSeparator;
        m_label += text;
    }
    for (RowItem& entry : m_items) {
        StatusNotifierItem& item = *entry.item;
        item.setPixmapCount(2);
        drawInto(item, 0, m_scratch, [&](CoverageMask& mask) { picture.drawGlyph(mask, kGlyphPoints); });
        drawInto(item, 1, m_scratch, [&](CoverageMask& mask) { picture.drawGlyph(mask, 2 * kGlyphPoints); });
        item.setLabel(m_label);
    }
}

void ItemRow::showTexts(std::optional<std::string_view> toolTip, std::string_view spokenLabel)
{
    m_toolTip = toolTip;
    m_spokenLabel = spokenLabel;
    for (RowItem& entry : m_items)
        entry.item->setTexts(toolTip, spokenLabel);
}

void ItemRow::setInk(Ink ink)
{
    m_ink = ink;
    for (RowItem& entry : m_items)
        entry.item->setInk(ink);
}

void ItemRow::publish()
{
    for (RowItem& entry : m_items)
        entry.item->publish();
}

void ItemRow::registerWith(const std::string& watcher)
{
    forgetWatcher();
    m_watcher = watcher;
    registerNext();
}

void ItemRow::forgetWatcher()
{
    m_watcher.clear();
    for (RowItem& entry : m_items) {
        entry.item->forgetWatcher();
        entry.registration = Registration::Outstanding;
    }
}

void ItemRow::registerNext()
{
    if (m_watcher.empty())
        return;
    // One after the other: from several connections at once, the order would be the bus's choice.
    for (std::size_t index = 0; index < m_items.size(); ++index) {
        if (m_items[index].registration == Registration::UnderWay)
            return;
        if (m_items[index].registration == Registration::Done)
            continue;
        m_items[index].registration = Registration::UnderWay;
        m_items[index].item->registerWith(m_watcher, [this, index] {
            m_items[index].registration = Registration::Done;
            registerNext();
        });
        return;
    }
}

} // namespace amperly
