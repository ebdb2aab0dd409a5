// The display's frames. On Wayland the compositor announces each; on X11, where nobody does, a
// timer keeps to the rate of the screen that the window is on.
#pragma once

#include "platform/frame_clock.h"

namespace amperly {

class DisplayFrames : public FrameClock {
public:
    /// Frames a second while the machine saves power.
    static constexpr double kGentleRate = 30.0;

    /// `savesPower` is asked whenever a run starts.
    explicit DisplayFrames(std::function<bool()> savesPower);

    [[nodiscard]] std::unique_ptr<Run> start(QWidget& widget, Frame frame) override;

private:
    std::function<bool()> m_savesPower;
};

} // namespace amperly
