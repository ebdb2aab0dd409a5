#include "platform/simulated/desktop/recording_status_item.h"

#include <algorithm>
#include <cmath>

namespace amperly {

namespace {

/// Whether all is alike that a picture's key stands for.
bool samePicture(const RecordingStatusItem::Shown& one, const RecordingStatusItem::Shown& other)
{
    return one.readingTexts == other.readingTexts && one.widthPoints == other.widthPoints
        && one.heightPoints == other.heightPoints && one.mask == other.mask;
}

} // namespace

void RecordingStatusItem::show(
    const StatusPicture& picture, std::optional<std::string_view> toolTip, std::string_view spokenLabel)
{
    Shown shown;
    for (int reading = 0; reading < picture.readingCount(); ++reading)
        shown.readingTexts.emplace_back(picture.readingText(reading));
    if (toolTip)
        shown.toolTip.emplace(*toolTip);
    shown.spokenLabel = spokenLabel;
    shown.widthPoints = picture.widthPoints();
    shown.heightPoints = picture.heightPoints();
    shown.scale = m_scale;
    shown.mask.clear(static_cast<int>(std::ceil(shown.widthPoints * m_scale)),
        static_cast<int>(std::ceil(shown.heightPoints * m_scale)));
    picture.draw(shown.mask, m_scale);

    ++m_showings;
    if (shown != m_shown)
        ++m_changes;
    if (m_shown && picture.key() == m_key && shown.scale == m_shown->scale && !samePicture(shown, *m_shown))
        ++m_contradictions;
    m_key = picture.key();
    m_shown = std::move(shown);
}

void RecordingStatusItem::wantPicture() const
{
    if (m_pictureWanted)
        m_pictureWanted();
}

void RecordingStatusItem::click(ClickButton button, std::optional<ScreenPoint> anchor)
{
    if (m_clicked)
        m_clicked({.button = button, .anchor = anchor});
}

void RecordingStatusItem::openMenu(std::optional<ScreenPoint> anchor)
{
    if (m_menu == nullptr || m_menuOpen)
        return;
    m_menuOpen = true;
    ++m_menuOpenings;
    m_menuAnchor = anchor;
    m_menu->announceWillOpen();
}

void RecordingStatusItem::closeMenu()
{
    if (!m_menuOpen)
        return;
    m_menuOpen = false;
    m_menu->announceDidClose();
}

bool RecordingStatusItem::choose(std::string_view title)
{
    if (!m_menuOpen)
        return false;
    const std::vector<MenuEntry>& entries = m_menu->entries();
    const auto chosen = std::find_if(entries.begin(), entries.end(),
        [title](const MenuEntry& entry) { return !entry.separator && entry.title == title; });
    if (chosen == entries.end() || !chosen->visible || !chosen->enabled || !chosen->activate)
        return false;
    const std::function<void()> activate = chosen->activate; // the menu may change while it closes
    closeMenu();
    activate();
    return true;
}

std::vector<std::string> RecordingStatusItem::visibleTitles() const
{
    std::vector<std::string> titles;
    if (m_menu == nullptr)
        return titles;
    for (const MenuEntry& entry : m_menu->entries()) {
        if (entry.visible)
            titles.push_back(entry.separator ? std::string() : entry.title);
    }
    return titles;
}

} // namespace amperly
