// Where this machine's figures come from.
#pragma once

#include "platform/linux/power/linux_power_source.h"
#include "platform/linux/power/posix_files.h"

namespace amperly {

struct OwnSources {
    PosixFiles files;
    LinuxPowerSource power{files};
};

} // namespace amperly
