// One power supply of the kernel, with its files kept open.
//
// Its `uevent` holds all attributes at one moment for the price of one read, so that is asked
// first. A single attribute in error empties it on some machines; then, and for what an older
// kernel leaves out, the attributes' own files are asked, and only those that are used.
#pragma once

#include "platform/linux/power/supply_reading.h"
#include "platform/linux/power/sysfs.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace amperly {

class Supply {
public:
    /// Opens the supply in `directory` and finds out what it is. `files` must outlive it.
    Supply(SystemFiles& files, std::string directory, std::string_view name);

    [[nodiscard]] const SupplyTraits& traits() const { return m_traits; }

    /// Whether it can be a source of power for the system, if perhaps not now.
    [[nodiscard]] bool isOfInterest() const;
    [[nodiscard]] bool isBattery() const { return m_identity.type() == SupplyType::Battery; }

    /// Reads the supply; nothing when it is no more. `isOneOfSeveral`: of the batteries, whose
    /// contents are then needed besides their percentages.
    [[nodiscard]] std::optional<SupplyAttributes> read(bool isOneOfSeveral);

private:
    class Reader;

    [[nodiscard]] const SupplyAttributes& attributesIn(std::string_view uevent);

    SystemFiles* m_files;
    std::string m_directory;
    SupplyTraits m_traits;
    SupplyAttributes m_identity; ///< what is certain of type and scope
    KeptFile m_uevent;
    // Gauges refresh more rarely than we read: most texts are the ones of the time before.
    std::string m_lastUevent;
    SupplyAttributes m_lastAttributes;
    std::array<KeptFile, kAttributeCount> m_attributeFiles{};
    std::array<bool, kAttributeCount> m_isOpened{};
};

} // namespace amperly
