// The few things of the Desktop Entry Specification (freedesktop.org) that starting at login needs.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace amperly {

/// A program's path as the Exec key takes it: quoted where it needs to be, and escaped once more
/// as every string value of the format is.
[[nodiscard]] std::string execValue(std::string_view programPath);

/// The program that an Exec key starts: the reverse of execValue(), without the arguments. Nothing
/// where the value names no program.
[[nodiscard]] std::optional<std::string> execProgram(std::string_view value);

/// The value of `key` in the [Desktop Entry] group of a file's contents, without the blanks around
/// it; nothing where it is missing.
[[nodiscard]] std::optional<std::string_view> desktopEntryValue(
    std::string_view contents, std::string_view key);

} // namespace amperly
