// The display's frames. On Wayland the compositor announces each; on X11, where nobody does, a
// timer keeps to the rate of the screen that the window is on.
#pragma once

#include "platform/frame_clock.h"
#include "platform/linux/clock/window_visibility.h"

class QWindow;

namespace amperly {

/// When the next frame is due where nobody announces the display's own.
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

class DisplayFrames : public FrameClock {
public:
    /// Frames a second while the machine saves power.
    static constexpr double kGentleRate = 30.0;

    /// How often a run asks for what nobody announces: power saving, the screen's rate, whether it is on.
    static constexpr double kCheckSeconds = 1.0;

    /// What can be seen of a window, and a call when that changes; null where nothing can be found out.
    using VisibilityOf
        = std::function<std::unique_ptr<WindowVisibility>(QWindow&, std::function<void()> changed)>;

    /// `savesPower` is asked when a run starts and at every check.
    explicit DisplayFrames(std::function<bool()> savesPower, VisibilityOf visibilityOf = onX11,
        double checkSeconds = kCheckSeconds);

    [[nodiscard]] std::unique_ptr<Run> start(QWidget& widget, Frame frame) override;

private:
    static std::unique_ptr<WindowVisibility> onX11(QWindow& window, std::function<void()> changed);

    std::function<bool()> m_savesPower;
    VisibilityOf m_visibilityOf;
    double m_checkSeconds;
};

} // namespace amperly
