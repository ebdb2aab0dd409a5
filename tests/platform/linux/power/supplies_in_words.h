// Supplies as tests write them down: a few words and figures.
#pragma once

#include "platform/linux/power/supply_reading.h"
#include "tests/platform/linux/power/fake_files.h"

#include <string>
#include <vector>

namespace amperly {

inline SupplyReading supply(const std::string& name, const AttributeList& attributes)
{
    return {supplyTraits(name), SupplyAttributes::fromUevent(ueventText(name, attributes))};
}

inline SupplyReading battery(AttributeList attributes)
{
    attributes.insert(attributes.begin(), {"type", "Battery"});
    return supply("BAT0", attributes);
}

inline SupplyReading mains(const std::string& online)
{
    return supply("AC", {{"type", "Mains"}, {"online", online}});
}

} // namespace amperly
