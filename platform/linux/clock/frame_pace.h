// When the next frame is due where nobody announces the display's own.
#pragma once

namespace amperly {

class FramePace {
public:
    /// So many frames in a second. A display that states none, or nonsense, counts as one of 60.
    explicit FramePace(double rate);

    [[nodiscard]] double periodSeconds() const { return m_period; }

    /// A frame was shown at `now`, in seconds: returns when the next is due. It keeps step, so that
    /// frames which come a little late, as timers do, are no fewer; one that comes more than a
    /// period late takes up a new step.
    [[nodiscard]] double dueAfter(double now);

private:
    double m_period;
    double m_due = 0.0;
};

} // namespace amperly
