// A display whose frames come when the caller says so.
#pragma once

#include "platform/frame_clock.h"

namespace amperly {

class ManualFrameClock : public FrameClock {
public:
    explicit ManualFrameClock(double startSeconds = 0.0) : m_now(startSeconds) { }

    [[nodiscard]] std::unique_ptr<Run> start(QWidget& widget, Frame frame) override;

    /// The next frame, so many seconds after the one before.
    void advance(double seconds);

    /// As many frames as a display of `rate` frames a second shows in so many seconds.
    void play(double seconds, double rate = 60.0);

    [[nodiscard]] double now() const { return m_now; }

    /// Whether anybody is called at a frame.
    [[nodiscard]] bool isRunning() const { return !m_current.expired(); }

    /// How often somebody was.
    [[nodiscard]] int frames() const { return m_frames; }

private:
    class ManualRun;

    double m_now;
    int m_frames = 0;
    std::weak_ptr<Frame> m_current; ///< of the run that was started last
};

} // namespace amperly
