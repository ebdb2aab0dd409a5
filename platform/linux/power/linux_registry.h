// The kernel's power figures, presented as the battery's entry in the registry, for machines
// with a battery, several, or none. What a machine can't measure is called unknown, not 0.
#pragma once

#include "platform/linux/power/measured_sources.h"
#include "platform/linux/power/power_supplies.h"
#include "platform/registry.h"

#include <functional>
#include <memory>
#include <string>

namespace amperly {

class LinuxRegistry final : public Registry {
public:
    /// Reads sysfs at `root`. `monotonicSeconds` is a clock that never goes back; the steady
    /// clock where it is empty.
    explicit LinuxRegistry(const std::string& root = "/sys", std::function<double()> monotonicSeconds = {});

    /// The same through `files`, which must outlive it.
    LinuxRegistry(SystemFiles& files, const std::string& root, std::function<double()> monotonicSeconds = {});

    /// Takes one snapshot of all supplies and meters, the only thing here that reads files.
    /// 0 where there is nothing to read from. The entry before ends with this one.
    [[nodiscard]] RegistryEntry find(std::string_view className) override;
    [[nodiscard]] RegistryProperty copyProperty(RegistryEntry entry, std::string_view name) override;
    void release(RegistryEntry entry) override;

private:
    struct Snapshot {
        std::optional<bool> externalConnected{};
        std::optional<int> adapterRating{};
        BatteryFigures batteries{};
        PowerBalance balance{};
    };

    LinuxRegistry(std::unique_ptr<SystemFiles> owned, const std::string& root,
        std::function<double()> monotonicSeconds);

    std::unique_ptr<SystemFiles> m_ownedFiles;
    SystemFiles& m_files;
    PowerSupplies m_supplies;
    MeasuredSources m_measured;
    Snapshot m_snapshot;
    RegistryEntry m_entry = 0; ///< of m_snapshot; 0 while nobody holds it
    RegistryEntry m_lastEntry = 0;
};

} // namespace amperly
