// A panel as the bus sees it: the watcher, the host, what items tell it and what it asks them.
#pragma once

#include "platform/linux/bus/bus_connection.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace amperly::test {

/// What arrived from an item. A menu speaks for the first item of its connection.
struct Heard {
    std::string item;
    std::string member;
    friend bool operator==(const Heard&, const Heard&) = default;
};

struct Pixmap {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bytes;
    [[nodiscard]] std::vector<std::uint8_t> firstPixel() const { return {bytes.begin(), bytes.begin() + 4}; }
};

struct ToolTip {
    std::string icon;
    std::string title;
    std::string text;
    friend bool operator==(const ToolTip&, const ToolTip&) = default;
};

/// One entry of a menu as a host reads it.
struct MenuLine {
    int identifier = 0;
    std::string type;
    std::string label;
    bool enabled = true;
    bool visible = true;
    std::vector<std::string> shortcut;
    friend bool operator==(const MenuLine&, const MenuLine&) = default;
};

struct MenuLayout {
    std::uint32_t revision = 0;
    std::string rootDisplay;
    std::vector<MenuLine> lines;
};

class FakePanel {
public:
    /// Joins the bus at `address` and, as the watcher, takes its name there. Without a value in
    /// `hasHost` it does not know of hosts.
    explicit FakePanel(const std::string& address, std::optional<bool> hasHost = true);

    [[nodiscard]] BusConnection& connection() { return *m_connection; }

    /// Its unique name on the bus.
    [[nodiscard]] std::string address() const;

    /// Gives the watcher's name up, or takes it again, and listens on either way.
    void stopWatching();
    void watchAgain();

    /// Says that somebody shows items from now on, or nobody any more.
    void setHasHost(bool hasHost);

    /// Waits until so many items are registered in all.
    [[nodiscard]] bool sees(std::size_t items);

    /// The items' addresses, each a name on the bus and the path behind it, in the order in which
    /// they registered.
    [[nodiscard]] const std::vector<std::string>& items() const { return m_items; }

    /// Whether the item's connection is on the bus still.
    [[nodiscard]] bool isThere(const std::string& item);

    /// Everything that items told so far, up to all that was sent before this call.
    [[nodiscard]] std::vector<Heard> heard();

    /// Calls an item and waits for its answer; null for an error. `append` adds the arguments.
    BusMessage ask(const std::string& item, const char* path, const char* interface, const char* member,
        const std::function<void(sd_bus_message*)>& append = {});

    /// The answer to Properties.Get, inside its variant.
    BusMessage property(const std::string& item, const char* name);
    [[nodiscard]] std::string textProperty(const std::string& item, const char* name);
    [[nodiscard]] std::vector<Pixmap> pixmaps(const std::string& item);
    [[nodiscard]] ToolTip toolTip(const std::string& item);

    /// Names that GetAll has for the item.
    [[nodiscard]] std::vector<std::string> propertyNames(const std::string& item);

    void click(const std::string& item, const char* member, int x, int y);

    [[nodiscard]] MenuLayout layout(const std::string& item);
    bool aboutToShow(const std::string& item, int identifier = 0);
    void menuEvent(const std::string& item, int identifier, const char* what);

private:
    static int registerItem(sd_bus_message* call, void* self, sd_bus_error*);
    static int hasHostProperty(
        sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* self, sd_bus_error*);
    static int signalArrived(sd_bus_message* signal, void* self, sd_bus_error*);
    static const sd_bus_vtable kWatcher[];

    std::unique_ptr<BusConnection> m_connection;
    BusSlot m_object;
    BusSlot m_itemSignals;
    BusSlot m_menuSignals;
    BusSlot m_propertySignals;
    std::optional<bool> m_hasHost;
    std::vector<std::string> m_items;
    std::vector<Heard> m_heard;
};

} // namespace amperly::test
