// The items that make up the one status item on a given kind of host: a single wide or labelled
// one, or a tile for each reading, in the order in which the host will show them.
#pragma once

#include "platform/linux/bus/bus_connection.h"
#include "platform/linux/tray/dbus_menu.h"
#include "platform/linux/tray/host_profile.h"
#include "platform/linux/tray/menu_opening.h"
#include "platform/linux/tray/status_notifier_item.h"
#include "platform/status_picture.h"

#include <QObject>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace amperly {

/// The menu as the items export it.
struct ExportedMenu {
    Menu* menu = nullptr; ///< none: the items have no menu
    MenuOpening* opening = nullptr;
    std::vector<MenuEntry> leading; ///< entries above the menu's own
};

class ItemRow {
public:
    /// `busAddress` as BusConnection::open() takes it. What `menu` points to must outlive the row.
    ItemRow(const HostProfile& profile, std::string busAddress, ExportedMenu menu);
    ItemRow(const ItemRow&) = delete;
    ItemRow& operator=(const ItemRow&) = delete;

    [[nodiscard]] const HostProfile& profile() const { return m_profile; }

    /// Draws `picture` for screens of `scale` pixels per point and tells hosts what differs.
    void showPicture(const StatusPicture& picture, double scale, Ink ink);
    void showTexts(std::optional<std::string_view> toolTip, std::string_view spokenLabel);
    void setInk(Ink ink);

    /// Tells hosts all that changed since.
    void publish();

    /// Registers every item, present and future, with the watcher of that name on the bus.
    void registerWith(const std::string& watcher);

    /// There is no watcher any more; the items wait for the next.
    void forgetWatcher();

    void onClick(StatusItem::ClickHandler handler) { m_clickHandler = std::move(handler); }
    void onActivationToken(std::function<void(const std::string&)> handler)
    {
        m_tokenHandler = std::move(handler);
    }

    /// Called from the event loop when the bus has gone away; the handler may destroy the row.
    void onClosed(std::function<void()> handler) { m_closedHandler = std::move(handler); }

private:
    enum class Registration { Outstanding, UnderWay, Done };

    /// A connection to the bus with the menu of its items.
    struct Link {
        std::unique_ptr<BusConnection> connection;
        std::unique_ptr<DbusMenu> menu;
    };

    /// One item. Most hosts tell items, and their order, apart by connection, so that each has one
    /// of its own; where a host looks at the paths, all share one: what changes in one tick
    /// then goes out, is asked for and is answered in one go instead of waking the program again
    /// for each.
    struct RowItem {
        std::shared_ptr<Link> link;
        std::unique_ptr<StatusNotifierItem> item;
        Registration registration = Registration::Outstanding;
    };

    void resize(std::size_t count);
    void hideBeyond(std::size_t count);
    void closeBeyond(std::size_t count);
    [[nodiscard]] std::shared_ptr<Link> openLink();
    [[nodiscard]] RowItem openItem();
    void drawWide(const StatusPicture& picture, double scale);
    void drawTiles(const StatusPicture& picture, double scale);
    void drawLabelled(const StatusPicture& picture);
    void registerNext();

    const HostProfile m_profile;
    const std::string m_busAddress;
    const ExportedMenu m_menu;
    std::vector<RowItem> m_items; ///< in the order of registration
    std::size_t m_count = 0; ///< how many of them are shown, from the first
    std::vector<RowItem> m_retired; ///< closed once no dispatch of theirs can be under way
    std::string m_watcher;
    CoverageMask m_scratch;
    std::vector<int> m_sizes;
    std::string m_label;
    Ink m_ink;
    std::optional<std::string> m_toolTip;
    std::string m_spokenLabel;
    StatusItem::ClickHandler m_clickHandler;
    std::function<void(const std::string&)> m_tokenHandler;
    std::function<void()> m_closedHandler;
    QObject m_context;
};

} // namespace amperly
