// The display's frames: from the display link of the view where the system has them (macOS 14),
// from a timer at the display's rate before that.
#pragma once

#include "platform/frame_clock.h"
#include "platform/macos/shell/native_view.h"

namespace amperly {

class DisplayLinkFrames : public FrameClock {
public:
    /// Frames a second in the Low Power Mode. Otherwise there is one for each picture.
    static constexpr float kGentleRate = 30.0F;

    enum class Source {
        Newest, ///< the best that the system has
        Timer, ///< what there was before macOS 14
    };
    explicit DisplayLinkFrames(ViewOf viewOf = nativeView, Source source = Source::Newest)
        : m_viewOf(std::move(viewOf)), m_source(source)
    {
    }

    [[nodiscard]] std::unique_ptr<Run> start(QWidget& widget, Frame frame) override;

private:
    ViewOf m_viewOf;
    Source m_source;
};

} // namespace amperly
