#include "platform/linux/power/supply_traits.h"

namespace amperly {

SupplyTraits supplyTraits(std::string_view name)
{
    SupplyTraits traits;
    if (name.starts_with("macsmc-ac"))
        traits.rating = RatingSource::InputPowerLimit;
    else if (name.starts_with("ucsi"))
        traits.rating = RatingSource::Contract;
    else if (name.starts_with("CROS_"))
        traits.rating = RatingSource::DesignMaximum;

    // Of the drivers with a sign these have never had it the other way round.
    for (const std::string_view driver : {"macsmc-battery", "qcom-battmgr", "sbs-", "max170"})
        traits.hasSignedRate = traits.hasSignedRate || name.starts_with(driver);

    traits.isAlwaysOnline = name.starts_with("sbs-charger");
    return traits;
}

} // namespace amperly
