#include "platform/macos/frames/display_link_frames.h"

#import <QuartzCore/QuartzCore.h>

#include <utility>

/// What a display link calls.
API_AVAILABLE(macos(14.0))
@interface AMPFrameTarget : NSObject {
@public
    amperly::FrameClock::Frame _frame;
}
@end

@implementation AMPFrameTarget

- (void)frameOfLink:(CADisplayLink*)link
{
    // A frame may end its run, and the function must outlive its own call.
    if (const amperly::FrameClock::Frame frame = _frame)
        frame(link.timestamp);
}

@end

namespace amperly {
namespace {

float wantedRate()
{
    return NSProcessInfo.processInfo.lowPowerModeEnabled ? DisplayLinkFrames::kGentleRate
                                                         : DisplayLinkFrames::kUsualRate;
}

/// The link pauses by itself while its view cannot be seen, and goes with the view from one
/// display to another.
class API_AVAILABLE(macos(14.0)) LinkRun : public FrameClock::Run {
public:
    LinkRun(NSView* view, FrameClock::Frame frame) : m_target([AMPFrameTarget new])
    {
        m_target->_frame = std::move(frame);
        m_link = [view displayLinkWithTarget:m_target selector:@selector(frameOfLink:)];
        const float rate = wantedRate();
        m_link.preferredFrameRateRange = CAFrameRateRangeMake(rate / 2.0F, rate, rate);
        [m_link addToRunLoop:NSRunLoop.mainRunLoop forMode:NSRunLoopCommonModes];
    }
    ~LinkRun() override
    {
        m_target->_frame = nullptr;
        [m_link invalidate];
    }
    LinkRun(const LinkRun&) = delete;
    LinkRun& operator=(const LinkRun&) = delete;

private:
    AMPFrameTarget* m_target;
    CADisplayLink* m_link;
};

NSTimer* frameTimer(NSView* view, FrameClock::Frame frame)
{
    __weak NSView* weakView = view;
    return [NSTimer timerWithTimeInterval:1.0 / static_cast<double>(wantedRate())
                                  repeats:YES
                                    block:^(NSTimer*) {
                                        const auto running = frame;
                                        NSWindow* const window = weakView.window;
                                        if ((window.occlusionState & NSWindowOcclusionStateVisible) != 0)
                                            running(NSProcessInfo.processInfo.systemUptime);
                                    }];
}

class TimerRun : public FrameClock::Run {
public:
    TimerRun(NSView* view, FrameClock::Frame frame) : m_timer(frameTimer(view, std::move(frame)))
    {
        [NSRunLoop.mainRunLoop addTimer:m_timer forMode:NSRunLoopCommonModes];
    }
    ~TimerRun() override { [m_timer invalidate]; }
    TimerRun(const TimerRun&) = delete;
    TimerRun& operator=(const TimerRun&) = delete;

private:
    NSTimer* m_timer;
};

} // namespace

std::unique_ptr<FrameClock::Run> DisplayLinkFrames::start(QWidget& widget, Frame frame)
{
    NSView* const view = m_viewOf(widget);
    if (@available(macOS 14.0, *))
        return std::make_unique<LinkRun>(view, std::move(frame));
    return std::make_unique<TimerRun>(view, std::move(frame));
}

} // namespace amperly
