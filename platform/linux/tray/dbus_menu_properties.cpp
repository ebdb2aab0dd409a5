#include "platform/linux/tray/dbus_menu_properties.h"

#include <algorithm>
#include <array>

namespace amperly::dbus_menu {

namespace {

constexpr std::array<std::string_view, 5> kNames{"type", "label", "enabled", "visible", "shortcut"};

/// Whether the entry differs from the protocol's default in that property.
bool says(const MenuEntry& entry, std::string_view name)
{
    if (name == "type")
        return entry.separator;
    if (name == "label")
        return !entry.separator;
    if (name == "enabled")
        return !entry.enabled;
    if (name == "visible")
        return !entry.visible;
    return name == "shortcut" && entry.shortcut != 0;
}

/// The key's name as the X keyboard tables have it.
std::string keyName(char shortcut)
{
    return shortcut == ',' ? "comma" : std::string(1, shortcut);
}

int appendShortcut(sd_bus_message* message, char shortcut)
{
    int result = sd_bus_message_open_container(message, 'v', "aas");
    if (result >= 0)
        result = sd_bus_message_open_container(message, 'a', "as");
    if (result >= 0 && shortcut != 0)
        result = sd_bus_message_append(message, "as", 2, "Control", keyName(shortcut).c_str());
    if (result >= 0)
        result = sd_bus_message_close_container(message);
    return result < 0 ? result : sd_bus_message_close_container(message);
}

int appendNamed(sd_bus_message* message, const MenuEntry& entry, std::string_view name)
{
    int result = sd_bus_message_open_container(message, 'e', "sv");
    if (result >= 0)
        result = sd_bus_message_append(message, "s", std::string(name).c_str());
    if (result >= 0)
        result = appendValue(message, entry, name);
    return result < 0 ? result : sd_bus_message_close_container(message);
}

template <typename Wanted>
int appendDictionary(sd_bus_message* message, const MenuEntry& entry, Wanted wanted)
{
    int result = sd_bus_message_open_container(message, 'a', "{sv}");
    for (const std::string_view name : kNames) {
        if (result >= 0 && wanted(name))
            result = appendNamed(message, entry, name);
    }
    return result < 0 ? result : sd_bus_message_close_container(message);
}

} // namespace

std::string label(std::string_view title)
{
    std::string result;
    result.reserve(title.size());
    for (const char character : title) {
        if (character == '_')
            result += '_';
        result += character;
    }
    return result;
}

int appendValue(sd_bus_message* message, const MenuEntry& entry, std::string_view name)
{
    if (name == "type")
        return sd_bus_message_append(message, "v", "s", entry.separator ? "separator" : "standard");
    if (name == "label")
        return sd_bus_message_append(message, "v", "s", label(entry.title).c_str());
    if (name == "enabled")
        return sd_bus_message_append(message, "v", "b", static_cast<int>(entry.enabled));
    if (name == "visible")
        return sd_bus_message_append(message, "v", "b", static_cast<int>(entry.visible));
    if (name == "shortcut")
        return appendShortcut(message, entry.shortcut);
    return 0;
}

int appendProperties(sd_bus_message* message, const MenuEntry& entry, const std::vector<std::string>& names)
{
    return appendDictionary(message, entry, [&](std::string_view name) {
        return says(entry, name)
            && (names.empty() || std::find(names.begin(), names.end(), name) != names.end());
    });
}

int appendChanges(sd_bus_message* message, const MenuEntry& before, const MenuEntry& now)
{
    return appendDictionary(message, now, [&](std::string_view name) {
        return (name == "label" && before.title != now.title)
            || (name == "enabled" && before.enabled != now.enabled)
            || (name == "visible" && before.visible != now.visible);
    });
}

} // namespace amperly::dbus_menu
