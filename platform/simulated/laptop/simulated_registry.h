// The simulated laptop's device registry with the one service that matters here, the battery's
// controller. A found entry shows the laptop as it was when it was found.
//
// Without a battery the entry stays, as the controller does, and lacks what only a battery has.
#pragma once

#include "platform/registry.h"

#include <functional>
#include <map>
#include <string>

namespace amperly {

class SimulatedLaptop;

class SimulatedRegistry : public Registry {
public:
    explicit SimulatedRegistry(const SimulatedLaptop& laptop) : m_laptop(laptop) { }

    [[nodiscard]] RegistryEntry find(std::string_view className) override;
    [[nodiscard]] RegistryProperty copyProperty(RegistryEntry entry, std::string_view name) override;
    void release(RegistryEntry entry) override;

    // What has been asked of it so far.
    [[nodiscard]] int finds() const { return m_finds; } ///< failed ones included
    [[nodiscard]] int copies() const { return m_copies; } ///< of missing properties included
    [[nodiscard]] int releases() const { return m_releases; }
    [[nodiscard]] int outstandingEntries() const { return static_cast<int>(m_found.size()); }
    [[nodiscard]] int misuses() const { return m_misuses; } ///< of entries that are not outstanding

private:
    using Properties = std::map<std::string, RegistryProperty, std::less<>>;

    [[nodiscard]] Properties propertiesNow() const;

    const SimulatedLaptop& m_laptop;
    std::map<RegistryEntry, Properties> m_found;
    RegistryEntry m_lastEntry = 0;
    int m_finds = 0;
    int m_copies = 0;
    int m_releases = 0;
    int m_misuses = 0;
};

} // namespace amperly
