// The display's own rhythm: one call for each picture that it shows, and none while nobody looks.
#pragma once

#include <functional>
#include <memory>

class QWidget;

namespace amperly {

class FrameClock {
public:
    virtual ~FrameClock() = default;

    /// Frames come while it lives. It may be ended from within a frame.
    class Run {
    public:
        virtual ~Run() = default;
    };

    /// What is done at a frame, with the frame's time in seconds of a monotonic clock. It paints
    /// what it changes before it returns.
    using Frame = std::function<void(double seconds)>;

    /// Calls `frame` at each frame of the display that shows `widget`'s window, which must be
    /// shown already and outlive the run. There are no frames while the window is hidden, wholly
    /// covered or on a screen that is off; to spare the battery there may be fewer than the
    /// display shows.
    [[nodiscard]] virtual std::unique_ptr<Run> start(QWidget& widget, Frame frame) = 0;
};

} // namespace amperly
