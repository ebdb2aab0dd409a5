// The display's frames: from the display link of the view where the system has them (macOS 14),
// from a timer at the usual rate before that.
#pragma once

#include "platform/frame_clock.h"
#include "platform/macos/shell/native_view.h"

namespace amperly {

class DisplayLinkFrames : public FrameClock {
public:
    /// Frames a second: what an eye needs for this, on displays that could show twice as many.
    static constexpr float kUsualRate = 60.0F;

    /// Frames a second in the Low Power Mode.
    static constexpr float kGentleRate = 30.0F;

    explicit DisplayLinkFrames(ViewOf viewOf = nativeView) : m_viewOf(std::move(viewOf)) { }

    [[nodiscard]] std::unique_ptr<Run> start(QWidget& widget, Frame frame) override;

private:
    ViewOf m_viewOf;
};

} // namespace amperly
