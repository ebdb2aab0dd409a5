// What hosts may ask of the menu, and the answers.

#include "platform/linux/tray/dbus_menu.h"

#include "platform/linux/tray/dbus_menu_properties.h"

#include <QGuiApplication>

namespace amperly {

namespace {

DbusMenu& menuAt(void* self)
{
    return *static_cast<DbusMenu*>(self);
}

template <typename Value, char kType>
int readArray(sd_bus_message* message, std::vector<Value>& values)
{
    static constexpr char kElement[] = {kType, '\0'};
    int result = sd_bus_message_enter_container(message, 'a', kElement);
    while (result >= 0) {
        if constexpr (kType == 's') {
            const char* text = nullptr;
            result = sd_bus_message_read_basic(message, 's', &text);
            if (result > 0)
                values.emplace_back(text);
        } else {
            Value value{};
            result = sd_bus_message_read_basic(message, kType, &value);
            if (result > 0)
                values.push_back(value);
        }
        if (result == 0)
            return sd_bus_message_exit_container(message);
    }
    return result;
}

int replyWith(sd_bus_message* call, auto fill)
{
    sd_bus_message* reply = nullptr;
    int result = sd_bus_message_new_method_return(call, &reply);
    const BusMessage owner(reply);
    if (result >= 0)
        result = fill(reply);
    return result < 0 ? result : sd_bus_send(nullptr, reply, nullptr);
}

int noSuchEntry(sd_bus_error* error)
{
    return sd_bus_error_set_const(error, SD_BUS_ERROR_INVALID_ARGS, "There is no such menu entry");
}

int version(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*, sd_bus_error*)
{
    return sd_bus_message_append(reply, "u", std::uint32_t{3});
}

int status(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*, sd_bus_error*)
{
    return sd_bus_message_append(reply, "s", "normal");
}

int textDirection(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*, sd_bus_error*)
{
    return sd_bus_message_append(
        reply, "s", QGuiApplication::layoutDirection() == Qt::RightToLeft ? "rtl" : "ltr");
}

int iconThemePath(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*, sd_bus_error*)
{
    return sd_bus_message_append(reply, "as", 0);
}

/// Reads one event; 0 at the end of an array of them.
int readEvent(sd_bus_message* call, int& identifier, std::string& what)
{
    const char* name = nullptr;
    int result = sd_bus_message_read(call, "is", &identifier, &name);
    if (result <= 0)
        return result;
    what = name;
    result = sd_bus_message_skip(call, "vu");
    return result < 0 ? result : 1;
}

} // namespace

const sd_bus_vtable DbusMenu::kInterface[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("Version", "u", version, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Status", "s", status, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("TextDirection", "s", textDirection, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("IconThemePath", "as", iconThemePath, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_METHOD("GetLayout", "iias", "u(ia{sv}av)", getLayout, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("GetGroupProperties", "aias", "a(ia{sv})", getGroupProperties, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("GetProperty", "is", "v", getProperty, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Event", "isvu", "", event, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("EventGroup", "a(isvu)", "ai", eventGroup, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("AboutToShow", "i", "b", aboutToShow, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("AboutToShowGroup", "ai", "aiai", aboutToShowGroup, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_SIGNAL("ItemsPropertiesUpdated", "a(ia{sv})a(ias)", 0),
    SD_BUS_SIGNAL("LayoutUpdated", "ui", 0),
    SD_BUS_SIGNAL("ItemActivationRequested", "iu", 0),
    SD_BUS_VTABLE_END,
};

int DbusMenu::appendItem(sd_bus_message* message, int identifier, const Names& names, bool children) const
{
    int result = sd_bus_message_open_container(message, 'r', "ia{sv}av");
    if (result >= 0)
        result = sd_bus_message_append(message, "i", identifier);
    if (result >= 0) {
        result = identifier == kRoot
            ? sd_bus_message_append(message, "a{sv}", 1, "children-display", "s", "submenu")
            : dbus_menu::appendProperties(message, *entry(identifier), names);
    }
    if (result >= 0)
        result = sd_bus_message_open_container(message, 'a', "v");
    if (identifier == kRoot && children) {
        for (const int child : identifiers()) {
            if (result >= 0)
                result = sd_bus_message_open_container(message, 'v', "(ia{sv}av)");
            if (result >= 0)
                result = appendItem(message, child, names, false);
            if (result >= 0)
                result = sd_bus_message_close_container(message);
        }
    }
    if (result >= 0)
        result = sd_bus_message_close_container(message);
    return result < 0 ? result : sd_bus_message_close_container(message);
}

int DbusMenu::getLayout(sd_bus_message* call, void* self, sd_bus_error* error)
{
    DbusMenu& menu = menuAt(self);
    int parent = 0;
    int depth = 0;
    Names names;
    int result = sd_bus_message_read(call, "ii", &parent, &depth);
    if (result >= 0)
        result = readArray<std::string, 's'>(call, names);
    if (result < 0)
        return result;
    if (!menu.knows(parent))
        return noSuchEntry(error);
    menu.remember();
    return replyWith(call, [&](sd_bus_message* reply) {
        const int appended = sd_bus_message_append(reply, "u", menu.m_revision);
        return appended < 0 ? appended : menu.appendItem(reply, parent, names, depth != 0);
    });
}

int DbusMenu::getGroupProperties(sd_bus_message* call, void* self, sd_bus_error*)
{
    DbusMenu& menu = menuAt(self);
    std::vector<int> wanted;
    Names names;
    int result = readArray<int, 'i'>(call, wanted);
    if (result >= 0)
        result = readArray<std::string, 's'>(call, names);
    if (result < 0)
        return result;
    if (wanted.empty())
        wanted = menu.identifiers();
    return replyWith(call, [&](sd_bus_message* reply) {
        int appended = sd_bus_message_open_container(reply, 'a', "(ia{sv})");
        for (const int identifier : wanted) {
            const MenuEntry* entry = menu.entry(identifier);
            if (!entry || appended < 0)
                continue;
            appended = sd_bus_message_open_container(reply, 'r', "ia{sv}");
            if (appended >= 0)
                appended = sd_bus_message_append(reply, "i", identifier);
            if (appended >= 0)
                appended = dbus_menu::appendProperties(reply, *entry, names);
            if (appended >= 0)
                appended = sd_bus_message_close_container(reply);
        }
        return appended < 0 ? appended : sd_bus_message_close_container(reply);
    });
}

int DbusMenu::getProperty(sd_bus_message* call, void* self, sd_bus_error* error)
{
    int identifier = 0;
    const char* name = nullptr;
    const int result = sd_bus_message_read(call, "is", &identifier, &name);
    if (result < 0)
        return result;
    const MenuEntry* entry = menuAt(self).entry(identifier);
    if (!entry)
        return noSuchEntry(error);
    return replyWith(call, [&](sd_bus_message* reply) {
        const int appended = dbus_menu::appendValue(reply, *entry, name);
        return appended == 0
            ? sd_bus_error_set_const(error, SD_BUS_ERROR_INVALID_ARGS, "There is no such property")
            : appended;
    });
}

int DbusMenu::event(sd_bus_message* call, void* self, sd_bus_error* error)
{
    DbusMenu& menu = menuAt(self);
    int identifier = 0;
    std::string what;
    const int result = readEvent(call, identifier, what);
    if (result < 0)
        return result;
    if (!menu.knows(identifier))
        return noSuchEntry(error);
    menu.handleEvent(identifier, what);
    return sd_bus_reply_method_return(call, nullptr);
}

int DbusMenu::eventGroup(sd_bus_message* call, void* self, sd_bus_error* error)
{
    DbusMenu& menu = menuAt(self);
    std::vector<int> unknown;
    bool anyKnown = false;
    int result = sd_bus_message_enter_container(call, 'a', "(isvu)");
    while (result >= 0 && (result = sd_bus_message_enter_container(call, 'r', "isvu")) > 0) {
        int identifier = 0;
        std::string what;
        result = readEvent(call, identifier, what);
        if (result < 0)
            return result;
        if (menu.knows(identifier)) {
            anyKnown = true;
            menu.handleEvent(identifier, what);
        } else {
            unknown.push_back(identifier);
        }
        result = sd_bus_message_exit_container(call);
    }
    if (result < 0)
        return result;
    if (!anyKnown && !unknown.empty())
        return noSuchEntry(error);
    return replyWith(call, [&](sd_bus_message* reply) {
        return sd_bus_message_append_array(reply, 'i', unknown.data(), unknown.size() * sizeof(int));
    });
}

int DbusMenu::aboutToShow(sd_bus_message* call, void* self, sd_bus_error* error)
{
    int identifier = 0;
    const int result = sd_bus_message_read(call, "i", &identifier);
    if (result < 0)
        return result;
    if (!menuAt(self).knows(identifier))
        return noSuchEntry(error);
    const bool changed = identifier == kRoot && menuAt(self).prepareToShow();
    return sd_bus_reply_method_return(call, "b", static_cast<int>(changed));
}

int DbusMenu::aboutToShowGroup(sd_bus_message* call, void* self, sd_bus_error* error)
{
    DbusMenu& menu = menuAt(self);
    std::vector<int> asked;
    const int result = readArray<int, 'i'>(call, asked);
    if (result < 0)
        return result;
    std::vector<int> changed;
    std::vector<int> unknown;
    for (const int identifier : asked) {
        if (!menu.knows(identifier))
            unknown.push_back(identifier);
        else if (identifier == kRoot && menu.prepareToShow())
            changed.push_back(identifier);
    }
    if (!asked.empty() && unknown.size() == asked.size())
        return noSuchEntry(error);
    return replyWith(call, [&](sd_bus_message* reply) {
        const int appended
            = sd_bus_message_append_array(reply, 'i', changed.data(), changed.size() * sizeof(int));
        return appended < 0
            ? appended
            : sd_bus_message_append_array(reply, 'i', unknown.data(), unknown.size() * sizeof(int));
    });
}

} // namespace amperly
