// How a program stands in the Exec key of a desktop entry (freedesktop.org).
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

} // namespace amperly
