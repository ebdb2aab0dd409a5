// The plain menu, as data: what it lists and what its entries do. The platform shows it in
// whatever way its desktop shows menus and follows every change while it is open.
#pragma once

#include "platform/subscription.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace amperly {

struct MenuEntry {
    std::string title{}; ///< UTF-8; empty for a separator
    bool separator = false;
    bool enabled = true;
    bool visible = true;
    char shortcut = 0; ///< with the desktop's command key: ',' or 'q'; 0 for none
    std::function<void()> activate{}; ///< empty for a line that only says something

    /// Whether two entries look the same; what they do is not compared.
    [[nodiscard]] bool looksLike(const MenuEntry& other) const
    {
        return title == other.title && separator == other.separator && enabled == other.enabled
            && visible == other.visible && shortcut == other.shortcut;
    }
};

class Menu {
public:
    /// Adds an entry at the end and returns its index, which stays valid.
    int add(MenuEntry entry);

    [[nodiscard]] const std::vector<MenuEntry>& entries() const { return m_entries; }

    /// Changes what an entry shows. Where nothing changes, nobody is told.
    void setTitle(int index, std::string title);
    void setVisible(int index, bool visible);

    /// Calls `handler` with the entry's index after each change of what an entry shows. Everyone
    /// who shows the menu listens for themselves: the desktop may hold an exported copy while
    /// the program shows its own.
    [[nodiscard]] Subscription onEntryChanged(std::function<void(int index)> handler)
    {
        return m_subscribers.add(std::move(handler));
    }

    /// The platform calls these around showing the menu. About to open, the readings should be
    /// made fresh; the entries may change while the menu is open.
    void announceWillOpen();
    void announceDidClose();

    std::function<void()> willOpen; ///< set by the menu's owner
    std::function<void()> didClose; ///< set by the menu's owner

private:
    std::vector<MenuEntry> m_entries;
    Subscribers<int> m_subscribers;
};

} // namespace amperly
