// The settings that an X11 desktop publishes for all toolkits (XSETTINGS), read when asked for.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace amperly {

/// The integer called `name` among the serialised `settings`; nothing when it is not there or the
/// settings are damaged.
[[nodiscard]] std::optional<std::int32_t> integerSetting(
    std::span<const std::uint8_t> settings, std::string_view name);

/// The same for a text.
[[nodiscard]] std::optional<std::string> textSetting(
    std::span<const std::uint8_t> settings, std::string_view name);

/// The same of the toolkit's display; nothing on other windowing systems and desktops that publish
/// no settings.
[[nodiscard]] std::optional<std::int32_t> x11IntegerSetting(std::string_view name);
[[nodiscard]] std::optional<std::string> x11TextSetting(std::string_view name);

} // namespace amperly
