#include "platform/menu.h"

#include <utility>

namespace amperly {

int Menu::add(MenuEntry entry)
{
    m_entries.push_back(std::move(entry));
    return static_cast<int>(m_entries.size()) - 1;
}

void Menu::setTitle(int index, std::string title)
{
    MenuEntry& entry = m_entries[static_cast<std::size_t>(index)];
    if (entry.title == title)
        return;
    entry.title = std::move(title);
    m_subscribers.announce(index);
}

void Menu::setVisible(int index, bool visible)
{
    MenuEntry& entry = m_entries[static_cast<std::size_t>(index)];
    if (entry.visible == visible)
        return;
    entry.visible = visible;
    m_subscribers.announce(index);
}

void Menu::announceWillOpen()
{
    if (willOpen)
        willOpen();
}

void Menu::announceDidClose()
{
    if (didClose)
        didClose();
}

} // namespace amperly
