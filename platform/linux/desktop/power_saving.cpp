#include "platform/linux/desktop/power_saving.h"

#include "platform/linux/trimmed.h"

#include <fstream>

namespace amperly {

bool isSavingPower(const std::string& profilePath)
{
    std::ifstream file(profilePath);
    std::string profile;
    return std::getline(file, profile) && trimmed(profile) == "low-power";
}

} // namespace amperly
