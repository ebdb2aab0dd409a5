// How a node of the diagram looks. Lengths in points, opacities from 0 to 1; light falls from the
// upper left.
#pragma once

namespace amperly {

/// A pair that depends on whether power flows through the node.
struct ByActivity {
    double active = 0.0;
    double inactive = 0.0;
    [[nodiscard]] constexpr double of(bool isActive) const { return isActive ? active : inactive; }
};

struct NodeLook {
    double corner = 14.0;
    double spacing = 3.0; ///< between symbol, value and title
    double symbolSize = 20.0;
    double symbolHeight = 24.0;
    double sidePadding = 4.0; ///< least distance of the title from the sides

    // The translucent sheet under everything, as a share of white.
    double materialOnLight = 0.5;
    double materialOnDark = 0.06;

    ByActivity tint{.active = 0.1, .inactive = 0.03};
    double gloss = 0.1; ///< white at the top, nothing from the middle on

    double borderWidth = 1.0;
    ByActivity borderWhite{.active = 0.45, .inactive = 0.15}; ///< at the upper left
    ByActivity borderTint{.active = 0.55, .inactive = 0.12}; ///< halfway
    ByActivity borderEnd{.active = 0.2, .inactive = 0.05}; ///< at the lower right

    double glowSigma = 9.0;
    double glowReach = 16.0; ///< beyond the node, where the glow has faded out
    double glowDim = 0.1; ///< of an active node, at its darkest
    double glowBright = 0.38;
    double glowInactive = 0.05;
    double breathSeconds = 2.8;

    ByActivity opacity{.active = 1.0, .inactive = 0.55};
};
inline constexpr NodeLook kNodeLook;

static_assert(kNodeLook.glowReach < 2.0 * kNodeLook.glowSigma, "the glow is cut where little is left of it");

} // namespace amperly
