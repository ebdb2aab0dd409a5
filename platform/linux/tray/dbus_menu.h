// The menu, exported for hosts to draw: com.canonical.dbusmenu, version 3.
//
// An entry's identifier is its index plus one and never changes; entries come and go by their
// "visible" property. Identifier 0 is the menu itself.
#pragma once

#include "platform/linux/bus/bus_connection.h"
#include "platform/linux/tray/menu_opening.h"
#include "platform/menu.h"

#include <QObject>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace amperly {

/// The label of a title: an underscore would mark a shortcut letter, so it is doubled.
[[nodiscard]] std::string menuLabel(std::string_view title);

class DbusMenu {
public:
    /// The object path that the menu is exported at.
    static constexpr const char* kPath = "/MenuBar";

    /// The first of the identifiers that `leading` entries have.
    static constexpr int kLeadingIdentifier = 1000;

    /// Exports `menu` on `connection`, with the `leading` entries above its own. All three
    /// references must outlive this object.
    DbusMenu(
        BusConnection& connection, Menu& menu, MenuOpening& opening, std::vector<MenuEntry> leading = {});
    DbusMenu(const DbusMenu&) = delete;
    DbusMenu& operator=(const DbusMenu&) = delete;

    [[nodiscard]] const MenuEntry* entry(int identifier) const;

private:
    using Names = std::vector<std::string_view>;
    using Event = std::tuple<int, std::string_view, BusIgnored, BusIgnored>;

    static constexpr const char* kInterfaceName = "com.canonical.dbusmenu";
    static constexpr int kRoot = 0; ///< the menu itself

    static const sd_bus_vtable kInterface[];

    // What hosts ask.
    void getLayout(BusReply& reply, int parent, int depth, const Names& names);
    void getGroupProperties(BusReply& reply, const std::vector<int>& wanted, const Names& names);
    void getProperty(BusReply& reply, int identifier, std::string_view name);
    void event(BusReply& reply, int identifier, std::string_view what);
    void eventGroup(BusReply& reply, const std::vector<Event>& events);
    void aboutToShow(BusReply& reply, int identifier);
    void aboutToShowGroup(BusReply& reply, const std::vector<int>& asked);

    [[nodiscard]] std::vector<int> identifiers() const;
    [[nodiscard]] bool knows(int identifier) const;
    void writeItem(BusWriter& writer, int identifier, const Names& names, bool children) const;
    void handleEvent(int identifier, std::string_view what);
    bool prepareToShow();
    void publishLater();
    bool publish();
    void remember();

    BusConnection& m_connection;
    Menu& m_menu;
    MenuOpening& m_opening;
    std::vector<MenuEntry> m_leading;
    std::vector<MenuEntry> m_published; ///< the menu's own entries as hosts know them
    Subscription m_subscription;
    std::uint32_t m_revision = 1;
    bool m_fetched = false; ///< whether anybody asked for the layout yet
    bool m_publishing = false; ///< whether publish() is under way from the event loop
    QObject m_context;
    BusSlot m_slot;
};

} // namespace amperly
