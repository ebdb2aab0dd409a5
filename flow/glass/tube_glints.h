// The small stars of light that strong pulses throw.
#pragma once

#include "flow/glass/tube_profile.h"

#include <array>
#include <cstddef>

namespace amperly::glass {

struct TubeGlint {
    FlowPoint centre;
    double size = 0.0; ///< points; the disc and the arms are multiples of it
    double k = 0.0; ///< the swell it sits on, which its opacities are proportional to
};

/// The glints of one profile, in order.
class TubeGlints {
public:
    /// `width` is the tube's where no pulse is, in points.
    TubeGlints(const TubeProfile& profile, double width);

    [[nodiscard]] const TubeGlint* begin() const { return m_glints.data(); }
    [[nodiscard]] const TubeGlint* end() const { return m_glints.data() + m_count; }
    [[nodiscard]] std::size_t size() const { return m_count; }

private:
    std::array<TubeGlint, kCurveSampleCount / 2> m_glints{};
    std::size_t m_count = 0;
};

} // namespace amperly::glass
