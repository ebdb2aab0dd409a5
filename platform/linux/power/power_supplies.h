// All power supplies of the kernel that can power the system, followed as they come and go.
#pragma once

#include "platform/linux/power/supply.h"
#include "platform/linux/power/sysfs.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace amperly {

class PowerSupplies {
public:
    /// `root` is where sysfs is mounted. `files` must outlive this.
    PowerSupplies(SystemFiles& files, const std::string& root);

    /// Reads every supply once. `devicesChanged` says that the list of them may be out of date;
    /// besides, it is checked every few calls. The readings last until the next call.
    [[nodiscard]] std::span<const SupplyReading> read(bool devicesChanged);

private:
    void openAll();
    [[nodiscard]] bool readAll();

    SystemFiles& m_files;
    KeptFolder m_listing;
    std::vector<Supply> m_supplies;
    std::vector<SupplyReading> m_readings;
    bool m_hasSeveralBatteries = false;
    std::uint32_t m_turn = 0;
    Backoff m_reopening;
};

} // namespace amperly
