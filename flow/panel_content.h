// What the panel says of a reading: the phrase in its head, and what the three nodes of the diagram
// show.
#pragma once

#include "flow/glass/flow_color.h"
#include "platform/power_sample.h"

#include <string>
#include <string_view>

namespace amperly {

/// The one phrase that tells how charger and battery share the work.
struct Pill {
    std::string_view text{};
    std::string_view symbol{}; ///< a glyph's name
    Color color{};
    friend bool operator==(const Pill&, const Pill&) = default;
};

[[nodiscard]] Pill pill(const PowerSample& sample);

struct NodeContent {
    std::string_view symbol{}; ///< a glyph's name, which lives as long as the program
    std::string value{};
    std::string title{};
    Color tint{};
    bool active = false; ///< power flows in or out

    friend bool operator==(const NodeContent&, const NodeContent&) = default;
};

[[nodiscard]] NodeContent chargerContent(const PowerSample& sample);

/// `accent` is the desktop's own colour for what stands out.
[[nodiscard]] NodeContent computerContent(const PowerSample& sample, Color accent);

[[nodiscard]] NodeContent batteryContent(const PowerSample& sample);

// The same in a sentence each, for screen readers.
[[nodiscard]] std::string chargerSentence(const PowerSample& sample);
[[nodiscard]] std::string computerSentence(const PowerSample& sample);
[[nodiscard]] std::string batterySentence(const PowerSample& sample);

} // namespace amperly
