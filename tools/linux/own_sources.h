// Where this machine's figures come from.
#pragma once

#include "platform/linux/power/linux_registry.h"
#include "platform/linux/power/no_smc_service.h"

namespace amperly {

struct OwnSources {
    NoSmcService smcService;
    LinuxRegistry registry;
};

} // namespace amperly
