// What com.canonical.dbusmenu says about one entry, written into messages.
#pragma once

#include "platform/menu.h"

#include <string>
#include <string_view>
#include <systemd/sd-bus.h>
#include <vector>

namespace amperly::dbus_menu {

/// The label of a title: an underscore would mark a shortcut letter, so it is doubled.
[[nodiscard]] std::string label(std::string_view title);

/// Appends the a{sv} of an entry: those of `names`, or all for no names. Properties at the value
/// that the protocol gives to missing ones are left out.
int appendProperties(sd_bus_message* message, const MenuEntry& entry, const std::vector<std::string>& names);

/// Appends the a{sv} of what `now` shows differently than `before`.
int appendChanges(sd_bus_message* message, const MenuEntry& before, const MenuEntry& now);

/// Appends the value of one property as a variant, the protocol's default where the entry says
/// nothing; 0 without appending if there is no property of that name.
int appendValue(sd_bus_message* message, const MenuEntry& entry, std::string_view name);

} // namespace amperly::dbus_menu
