// The stretches of a tube that a pulse swells, and how strong a stripe drawn along one of them is.
#pragma once

#include "flow/glass/tube_profile.h"

#include <array>
#include <cstddef>

namespace amperly::glass {

/// Sections that follow each other and all swell. The colours along a run are a linear gradient
/// from its first point to its last, with one stop for each section.
struct SwellRun {
    std::size_t first = 0;
    std::size_t last = 0; ///< itself part of the run

    [[nodiscard]] std::size_t count() const { return last - first + 1; }
    friend bool operator==(const SwellRun&, const SwellRun&) = default;
};

/// The runs of one profile, in order.
class SwellRuns {
public:
    /// A section that swells between two that do not is no run.
    explicit SwellRuns(const TubeProfile& profile);

    [[nodiscard]] const SwellRun* begin() const { return m_runs.data(); }
    [[nodiscard]] const SwellRun* end() const { return m_runs.data() + m_count; }
    [[nodiscard]] std::size_t size() const { return m_count; }

private:
    std::array<SwellRun, kCurveSampleCount / 2> m_runs{};
    std::size_t m_count = 0;
};

/// The swell whose colour a run's gradient has at `place`: that of the stop found by projecting the
/// place on the line from the run's first point to its last, not that of the section beside it.
[[nodiscard]] double swellOfGradient(const TubeProfile& profile, const SwellRun& run, const FlowPoint& place);

} // namespace amperly::glass
