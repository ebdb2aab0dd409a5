// The colours of the power flows.
#pragma once

namespace amperly {

/// An opaque colour in sRGB, each component from 0 to 1.
struct Color {
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
    friend bool operator==(const Color&, const Color&) = default;

    /// This colour with each component moved towards white by the fraction `white`.
    [[nodiscard]] constexpr Color mix(double white) const
    {
        return {red + (1.0 - red) * white, green + (1.0 - green) * white, blue + (1.0 - blue) * white};
    }
};

struct FlowColor {
    static constexpr Color charger{0.25, 0.78, 0.45}; ///< power coming from the charger
    static constexpr Color charging{0.3, 0.62, 1.0}; ///< power going into the battery
    static constexpr Color draining{1.0, 0.62, 0.22}; ///< power coming out of the battery
};

} // namespace amperly
