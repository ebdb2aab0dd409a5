// How things move, as functions of the time since they began. Seconds everywhere; nothing here
// looks at a clock.
#pragma once

namespace amperly {

/// A spring that is released at 0 and comes to rest at 1. `response` is its period without damping,
/// in seconds; a `damping` of 1 is the least that does not overshoot.
struct Spring {
    double response = 0.0;
    double damping = 0.0;

    /// Where the spring is; exactly 1 from settlingSeconds() on.
    [[nodiscard]] double at(double elapsed) const;

    /// After so long what is left of the oscillation can no longer be seen.
    [[nodiscard]] double settlingSeconds() const;
};

/// The usual curve that starts and ends slowly, from a fraction of the time, clamped to 0 to 1, to
/// the fraction of the distance.
[[nodiscard]] double easeInOut(double fraction);

/// From 0 to 1 in `seconds`, eased, back again as long, and so on for ever.
[[nodiscard]] double breathe(double elapsed, double seconds);

} // namespace amperly
