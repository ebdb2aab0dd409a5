// The objects behind the fake CoreFoundation, and what the fake IOKit needs to know of them.
#pragma once

#include "tests/platform/macos/fakes/fake_machine.h"

#include <optional>

namespace amperly::fake_mac {

/// Writes down a misuse.
void violation(const std::string& what);

/// Whether the allocation that is about to happen has to fail.
[[nodiscard]] bool allocationFails();

/// How many objects are alive, and how many have been made since the last reset.
[[nodiscard]] int liveObjects();
[[nodiscard]] int objectsMade();

/// Forgets all objects.
void resetObjects();

/// The class name that a matching dictionary asks for.
[[nodiscard]] std::string matchingClass(CFTypeRef dictionary);

/// The characters of a string object.
[[nodiscard]] std::string textOf(CFStringRef string);

/// A number of Objective-C, which CoreFoundation takes for one of its own.
struct BridgedNumber {
    bool isBoolean = false;
    bool isFloat = false;
};

/// Tells of bridged numbers; null where Objective-C is not part of the program.
extern std::optional<BridgedNumber> (*bridgedNumber)(CFTypeRef object);

} // namespace amperly::fake_mac
