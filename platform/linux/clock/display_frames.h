// The display's frames. On Wayland the compositor announces each; on X11, where nobody does, a
// timer keeps to the rate of the screen that the window is on.
#pragma once

#include "platform/frame_clock.h"
#include "platform/linux/clock/sight.h"

class QWindow;

namespace amperly {

class DisplayFrames : public FrameClock {
public:
    /// Frames a second while the machine saves power.
    static constexpr double kGentleRate = 30.0;

    /// Seconds between two looks of a run at what nobody announces: power saving, the screen's
    /// rate, whether it is on.
    static constexpr double kLookSeconds = 1.0;

    /// What can be seen of a window, and a call when that changes; null where nothing can be found out.
    using SightOf = std::function<std::unique_ptr<Sight>(QWindow&, std::function<void()> changed)>;

    /// `savesPower` is asked when a run starts and at every look.
    explicit DisplayFrames(
        std::function<bool()> savesPower, SightOf sightOf = sightOnX11, double lookSeconds = kLookSeconds);

    [[nodiscard]] std::unique_ptr<Run> start(QWidget& widget, Frame frame) override;

private:
    static std::unique_ptr<Sight> sightOnX11(QWindow& window, std::function<void()> changed);

    std::function<bool()> m_savesPower;
    SightOf m_sightOf;
    double m_lookSeconds;
};

} // namespace amperly
