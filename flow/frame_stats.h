// Counts frames for developers: with the variable AMPERLY_FPS in its environment the program
// prints one line a second while the diagram moves.
#pragma once

#include <cstdio>
#include <optional>

namespace amperly {

class FrameStats {
public:
    /// Lines go to `output`, which must outlive this.
    explicit FrameStats(std::FILE* output) : m_output(output) { }

    /// Whether the environment asks for it; looked up once.
    [[nodiscard]] static bool enabled();

    /// The program's own counters, which print to standard output.
    [[nodiscard]] static FrameStats& standard();

    /// One frame, at `now` in seconds of a monotonic clock.
    void frame(double now);

private:
    std::FILE* m_output;
    std::optional<double> m_last;
    double m_periodStart = 0.0;
    double m_worstGap = 0.0; ///< seconds
    int m_count = 0;
};

} // namespace amperly
