// The one phrase that tells how charger and battery share the work.
#pragma once

#include "flow/glass/flow_color.h"
#include "platform/power_sample.h"

#include <string_view>

namespace amperly {

struct Pill {
    std::string_view text{};
    std::string_view symbol{}; ///< a glyph's name
    Color color{};
    friend bool operator==(const Pill&, const Pill&) = default;
};

[[nodiscard]] Pill pill(const PowerSample& sample);

} // namespace amperly
