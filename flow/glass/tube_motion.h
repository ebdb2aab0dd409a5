// What of a tube changes from frame to frame: how wide it is and how bright its pulses are, step
// by step along it, and where it glints.
#pragma once

#include "flow/glass/glint.h"
#include "flow/glass/tube_layout.h"
#include "flow/glass/tube_profile.h"

#include <array>
#include <cstdint>
#include <vector>

namespace amperly::glass {

/// One step along a tube: from the lowest bit on, 16 bits of half width in 1/256 pixel and 8 bits
/// each of the opacities of the pulse core and the pulse highlight, 1 being 256.
using TubeColumn = std::uint32_t;

[[nodiscard]] constexpr TubeColumn tubeColumn(std::uint32_t half, std::uint32_t core, std::uint32_t highlight)
{
    return half | core << 16U | highlight << 24U;
}

class TubeMotion {
public:
    /// The tube of `layout` at one moment. Nothing of the moment before is kept.
    void update(const TubeLayout& layout, double width, double travelled);

    /// One for each of the layout's steps.
    [[nodiscard]] const TubeColumn* columns() const { return m_columns.data(); }

    [[nodiscard]] const TubeProfile& profile() const { return m_profile; }

    /// The swell that colours the halo, one for each section.
    [[nodiscard]] const std::array<float, kCurveSampleCount>& halo() const { return m_halo; }

    [[nodiscard]] const AlongTube<TubeGlint>& glints() const { return m_glints; }

    /// Nothing but glow and glints is further from the centre line, in 1/256 pixel.
    [[nodiscard]] int reach() const { return m_reach; }

private:
    void fillColumns(const TubeLayout& layout);

    TubeProfile m_profile{};
    AlongTube<TubeGlint> m_glints;
    std::array<float, kCurveSampleCount> m_halo{};
    std::array<float, kCurveSampleCount> m_core{};
    std::array<float, kCurveSampleCount> m_highlight{};
    std::vector<TubeColumn> m_columns;
    int m_reach = 0;
};

} // namespace amperly::glass
