// A registry with one service whose properties a test writes down, and which keeps account of
// every look-up, copy and release.
#pragma once

#include "platform/registry.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace amperly {

class CannedRegistry : public Registry {
public:
    static constexpr RegistryEntry kEntry = 0x2a03;

    bool present = true;
    std::map<std::string, RegistryProperty, std::less<>> properties;

    std::vector<std::string> foundClasses;
    std::vector<std::string> copiedNames;
    std::vector<RegistryEntry> releasedEntries;
    bool copiedFromElsewhere = false; ///< from another entry, or after its release

    void set(std::string_view name, RegistryProperty value)
    {
        properties.insert_or_assign(std::string(name), std::move(value));
    }

    RegistryEntry find(std::string_view className) override
    {
        foundClasses.emplace_back(className);
        return present ? kEntry : 0;
    }

    RegistryProperty copyProperty(RegistryEntry entry, std::string_view name) override
    {
        copiedNames.emplace_back(name);
        if (entry != kEntry || releasedEntries.size() >= foundClasses.size())
            copiedFromElsewhere = true;
        const auto found = properties.find(name);
        return found == properties.end() ? RegistryProperty() : found->second;
    }

    void release(RegistryEntry entry) override { releasedEntries.push_back(entry); }
};

/// A dictionary property with the given entries.
inline RegistryDictionary dictionary(
    std::initializer_list<std::pair<std::string_view, RegistryScalar>> entries)
{
    RegistryDictionary result;
    for (const auto& [name, value] : entries)
        result.emplace(name, value);
    return result;
}

} // namespace amperly
