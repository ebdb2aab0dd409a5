// The shape of a tube at one moment, and the stretches of it that a pulse swells. Everything drawn
// of it goes by this alone.
#pragma once

#include "flow/glass/curve.h"

#include <array>
#include <cstddef>

namespace amperly::glass {

/// The tube where one of the curve's samples is. Points.
struct TubeSection {
    FlowPoint p; ///< on the centre line
    FlowPoint n; ///< unit normal, to the upper side
    double half = 0.0; ///< half width
    double k = 0.0; ///< how much it swells, from 0 to 1

    /// Away from the centre line by `fraction` of the half width.
    [[nodiscard]] FlowPoint at(double fraction) const
    {
        return {p.x + n.x * half * fraction, p.y + n.y * half * fraction};
    }
};

using TubeProfile = std::array<TubeSection, kCurveSampleCount>;

/// The tube along `samples` with `normals` to its upper side, `width` points wide where no pulse
/// is, after its pulses have moved by `travelled` points.
[[nodiscard]] TubeProfile tubeProfile(
    const CurveSamples& samples, const CurveNormals& normals, double width, double travelled);

/// What at most every other section of a profile can have one of, in order along the tube.
template <class Item>
class AlongTube {
public:
    void add(const Item& item) { m_items[m_count++] = item; }

    [[nodiscard]] const Item* begin() const { return m_items.data(); }
    [[nodiscard]] const Item* end() const { return m_items.data() + m_count; }
    [[nodiscard]] std::size_t size() const { return m_count; }

private:
    std::array<Item, kCurveSampleCount / 2> m_items{};
    std::size_t m_count = 0;
};

/// Sections that follow each other and all swell. The colours along a run are a linear gradient
/// from its first point to its last, with one stop for each section.
struct SwellRun {
    std::size_t first = 0;
    std::size_t last = 0; ///< itself part of the run

    [[nodiscard]] std::size_t count() const { return last - first + 1; }
    friend bool operator==(const SwellRun&, const SwellRun&) = default;
};

/// A section that swells between two that do not is no run.
[[nodiscard]] AlongTube<SwellRun> swellRuns(const TubeProfile& profile);

/// The swell whose colour a run's gradient has at `point`: that of the stop found by projecting the
/// point on the line from the run's first point to its last, not that of the section beside it.
[[nodiscard]] double swellOfGradient(const TubeProfile& profile, const SwellRun& run, const FlowPoint& point);

} // namespace amperly::glass
