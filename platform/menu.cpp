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
    announceChange(index);
}

void Menu::setVisible(int index, bool visible)
{
    MenuEntry& entry = m_entries[static_cast<std::size_t>(index)];
    if (entry.visible == visible)
        return;
    entry.visible = visible;
    announceChange(index);
}

Menu::Listener Menu::onEntryChanged(EntryChangeHandler handler)
{
    // A menu is opened many times in a run; places that were let go serve again.
    for (std::size_t place = 0; place < m_listeners.size(); ++place) {
        if (!m_listeners[place]) {
            m_listeners[place] = std::move(handler);
            return static_cast<Listener>(place);
        }
    }
    m_listeners.push_back(std::move(handler));
    return static_cast<Listener>(m_listeners.size() - 1);
}

void Menu::stopListening(Listener listener)
{
    m_listeners[static_cast<std::size_t>(listener)] = nullptr;
}

void Menu::announceChange(int index)
{
    // By place, because a handler may add another one.
    for (std::size_t place = 0; place < m_listeners.size(); ++place) {
        if (m_listeners[place])
            m_listeners[place](index);
    }
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
