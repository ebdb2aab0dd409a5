#include "platform/linux/power/power_supplies.h"

#include <algorithm>

namespace amperly {

namespace {

// Where the kernel's announcements don't reach (containers, mocks) a new battery shows after
// this many turns at the latest.
constexpr std::uint32_t kTurnsBetweenSupplyListings = 5;

} // namespace

PowerSupplies::PowerSupplies(SystemFiles& files, const std::string& root)
    : m_files(files), m_listing(files, root + "/class/power_supply")
{
}

void PowerSupplies::openAll()
{
    m_supplies.clear();
    for (const std::string& name : m_listing.names()) {
        Supply supply(m_files, m_listing.path() + '/' + name, name);
        if (supply.isOfInterest())
            m_supplies.push_back(std::move(supply));
    }
    m_hasSeveralBatteries = std::count_if(m_supplies.begin(), m_supplies.end(), [](const Supply& supply) {
        return supply.isBattery();
    }) > 1;
    m_readings.reserve(m_supplies.size());
}

bool PowerSupplies::readAll()
{
    bool areAllThere = true;
    m_readings.clear();
    for (Supply& supply : m_supplies) {
        if (const std::optional<SupplyAttributes> attributes = supply.read(m_hasSeveralBatteries))
            m_readings.push_back({supply.traits(), *attributes});
        else
            areAllThere = false;
    }
    return areAllThere;
}

std::span<const SupplyReading> PowerSupplies::read(bool devicesChanged)
{
    const bool isListingDue = m_turn++ % kTurnsBetweenSupplyListings == 0;
    if ((devicesChanged || isListingDue) && m_listing.changed())
        openAll();

    if (readAll()) {
        m_reopening.succeeded();
    } else if (m_reopening.isDue()) {
        // Removed, replaced, or plugged out and in again under the same name. A supply that
        // stays listed but dead is not worth opening at every turn.
        m_reopening.failed();
        static_cast<void>(m_listing.changed());
        openAll();
        static_cast<void>(readAll());
    }
    return m_readings;
}

} // namespace amperly
