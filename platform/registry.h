// The registry of the machine's devices: named services, each with named properties.
// What the battery's controller knows is read here, one property at a time, as copies.
//
// A copy lives in the caller's memory and takes none from the heap for the sizes that occur
// at every tick: a dictionary holds its first entries inline, names of up to 23 bytes included.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace amperly {

/// A value inside a dictionary, or a plain property. monostate is anything else the
/// platform can store (text, data, arrays), which no reader here takes for a number.
using RegistryScalar = std::variant<std::monostate, bool, std::int64_t, double>;

/// A text-keyed dictionary property.
class RegistryDictionary {
public:
    /// Adds an entry; a name that is there already keeps its first value.
    void add(std::string_view name, RegistryScalar value);

    /// The entry called `name`, or monostate where there is none.
    [[nodiscard]] RegistryScalar find(std::string_view name) const;

    [[nodiscard]] std::size_t size() const { return m_inlineCount + m_more.size(); }
    [[nodiscard]] bool empty() const { return size() == 0; }

private:
    // The longest names in use are longer than what a std::string holds without the heap.
    static constexpr std::size_t kInlineNameLength = 23;
    struct InlineEntry {
        std::array<char, kInlineNameLength> characters{};
        std::uint8_t length = 0;
        RegistryScalar value;
    };
    struct Entry {
        std::string name;
        RegistryScalar value;
    };
    static constexpr std::size_t kInlineEntries = 6;
    std::array<InlineEntry, kInlineEntries> m_inline;
    std::size_t m_inlineCount = 0;
    std::vector<Entry> m_more;
};

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
