// The objects behind the fake CoreFoundation, and what the fake IOKit needs to know of them.
#pragma once

#include "tests/platform/macos/fakes/fake_machine.h"

#include <any>
#include <optional>
#include <utility>

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

/// An object of a type that only its own framework knows, one reference owned by the caller.
[[nodiscard]] CFTypeRef makeOpaque(std::any content);
[[nodiscard]] std::any& opaqueContent(CFTypeRef object);

template <typename Content>
[[nodiscard]] CFTypeRef makePayload(Content content)
{
    return makeOpaque(std::any(std::move(content)));
}

template <typename Content>
[[nodiscard]] Content& payload(CFTypeRef object)
{
    return std::any_cast<Content&>(opaqueContent(object));
}

/// A number of Objective-C, which CoreFoundation takes for one of its own.
struct BridgedNumber {
    bool isBoolean = false;
    bool isFloat = false;
};

/// Tells of bridged numbers; null where Objective-C is not part of the program.
extern std::optional<BridgedNumber> (*bridgedNumber)(CFTypeRef object);

} // namespace amperly::fake_mac
