// How much of each pixel's light a glint is: a soft disc, a cross on it and a dot on that. All of
// it is white, so one opacity says it.
#pragma once

#include "flow/glass/tube_glints.h"

#include <cstdint>

namespace amperly::glass {

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
