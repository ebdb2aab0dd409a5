// Where a reading of the machine's power comes from. Every back end has one.
#pragma once

#include "platform/power_sample.h"

#include <optional>

namespace amperly {

class PowerSource {
public:
    virtual ~PowerSource() = default;

    /// Takes one reading, at once and cheaply enough for every tick. Nothing where the machine
    /// offers no figures at all.
    [[nodiscard]] virtual std::optional<PowerSample> read() = 0;
};

} // namespace amperly
