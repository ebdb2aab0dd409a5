// Whether the machine is to spare its battery, as its firmware's platform profile says.
#pragma once

#include <string>

namespace amperly {

inline constexpr const char* kPlatformProfile = "/sys/firmware/acpi/platform_profile";

/// False on machines without such profiles.
[[nodiscard]] bool isSavingPower(const std::string& profilePath = kPlatformProfile);

} // namespace amperly
