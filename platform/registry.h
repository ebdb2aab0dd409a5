// The registry of the machine's devices: named services, each with named properties.
// What the battery's controller knows is read here, one property at a time, as copies.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <variant>

namespace amperly {

/// A value inside a dictionary, or a plain property. monostate is anything else the
/// platform can store (text, data, arrays), which no reader here takes for a number.
using RegistryScalar = std::variant<std::monostate, bool, std::int64_t, double>;

/// A text-keyed dictionary property.
using RegistryDictionary = std::map<std::string, RegistryScalar, std::less<>>;

/// The entry called `name`, or monostate where there is none.
[[nodiscard]] inline RegistryScalar entryIn(const RegistryDictionary& dictionary, std::string_view name)
{
    const auto found = dictionary.find(name);
    return found == dictionary.end() ? RegistryScalar() : found->second;
}

/// One property as it was copied; monostate where it is missing or of another type.
using RegistryProperty = std::variant<std::monostate, bool, std::int64_t, double, RegistryDictionary>;

/// Handle of a found service; 0 means none.
using RegistryEntry = std::uint32_t;

class Registry {
public:
    virtual ~Registry() = default;

    /// The first service of class `className`, or 0. A found entry is the caller's until
    /// release(); its properties are one consistent state of the device as far as the
    /// platform can give one.
    [[nodiscard]] virtual RegistryEntry find(std::string_view className) = 0;

    /// A copy of one property of `entry`.
    [[nodiscard]] virtual RegistryProperty copyProperty(RegistryEntry entry, std::string_view name) = 0;

    /// Gives back an entry that find() gave.
    virtual void release(RegistryEntry entry) = 0;
};

} // namespace amperly
