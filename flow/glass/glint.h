// The small stars of light that strong pulses throw: where they are, and how much of each pixel they
// cover.
#pragma once

#include "flow/glass/tube_profile.h"

#include <cstdint>

namespace amperly::glass {

struct TubeGlint {
    FlowPoint centre;
    double size = 0.0; ///< points; the disc and the arms are multiples of it
    double k = 0.0; ///< the swell it sits on, which its opacities are proportional to
};

/// The glints of one profile. `width` is the tube's where no pulse is, in points.
[[nodiscard]] AlongTube<TubeGlint> tubeGlints(const TubeProfile& profile, double width);

/// A glint in pixels: a soft disc, a cross on it and a dot on that. All of it is white, so that one
/// opacity says it.
class GlintLight {
public:
    /// On a canvas of so many pixels.
    GlintLight(const TubeGlint& glint, int width, int height, double scale);

    /// The pixels it reaches on the canvas: from left() to right() - 1 and from top() to bottom() - 1.
    [[nodiscard]] int left() const { return m_left; }
    [[nodiscard]] int right() const { return m_right; }
    [[nodiscard]] int top() const { return m_top; }
    [[nodiscard]] int bottom() const { return m_bottom; }

    /// The opacities of row `y` from left() to right() - 1, 65536 being all.
    void row(int y, std::uint16_t* opacities) const;

private:
    // Pixels.
    float m_x;
    float m_y;
    float m_discRadius;
    float m_armAcross;
    float m_armUp;
    float m_armHalfWidth;
    float m_dotRadius;
    float m_k;

    int m_left;
    int m_right;
    int m_top;
    int m_bottom;
};

} // namespace amperly::glass
