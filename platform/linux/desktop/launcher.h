// Starts other programs of the desktop and leaves them to themselves.
#pragma once

#include <string>
#include <vector>

namespace amperly {

/// A program, looked for in PATH, and its arguments. UTF-8.
using CommandLine = std::vector<std::string>;

/// Whether PATH has a program of that name.
[[nodiscard]] bool isProgram(const std::string& name);

/// Starts `command` detached from this program; it outlives it and leaves nothing to wait for.
/// False where the program does not exist or cannot be run.
[[nodiscard]] bool startDetached(const CommandLine& command);

} // namespace amperly
