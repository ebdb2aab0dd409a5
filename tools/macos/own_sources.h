// Where this machine's figures come from.
#pragma once

#include "platform/macos/power/io_kit_registry.h"
#include "platform/macos/power/io_kit_smc_service.h"
#include "telemetry/power_reader.h"

namespace amperly {

struct OwnSources {
    IoKitSmcService smcService;
    IoKitRegistry registry;
    PowerReader power{smcService, registry};
};

} // namespace amperly
