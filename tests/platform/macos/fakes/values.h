// Values as the fake Foundation holds them, and as tests write them.
#pragma once

#include "tests/platform/macos/fakes/objects.h"

#include <map>

namespace amperly::fake_mac {

/// What a dictionary holds.
using DictionaryFields = std::map<std::string, id>;

/// A value as an object; nil for nothing.
[[nodiscard]] id boxed(const Stored& value);

/// Back again.
[[nodiscard]] Stored unboxed(id object);

/// Lets CoreFoundation know numbers of Objective-C.
void bridgeNumbers();

} // namespace amperly::fake_mac
