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

bool sparesPower()
{
    return NSProcessInfo.processInfo.lowPowerModeEnabled;
}

/// Frames a second for a timer: what the display of `view` can show.
double timerRate(NSView* view)
{
    constexpr NSInteger kUsualRate = 60; // of displays that don't say
    if (sparesPower())
        return static_cast<double>(DisplayLinkFrames::kGentleRate);
    NSScreen* const screen = view.window.screen;
    const NSInteger most = screen != nil ? screen.maximumFramesPerSecond : 0;
    return static_cast<double>(most > 0 ? most : kUsualRate);
}

/// The link pauses by itself while its view cannot be seen, and goes with the view from one
/// display to another.
class API_AVAILABLE(macos(14.0)) LinkRun : public FrameClock::Run {
public:
    LinkRun(NSView* view, FrameClock::Frame frame) : m_target([AMPFrameTarget new])
    {
        m_target->_frame = std::move(frame);
        m_link = [view displayLinkWithTarget:m_target selector:@selector(frameOfLink:)];
        constexpr float kGentle = DisplayLinkFrames::kGentleRate;
        if (sparesPower())
            m_link.preferredFrameRateRange = CAFrameRateRangeMake(kGentle / 2.0F, kGentle, kGentle);
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
    // A tenth of a frame late is early enough, and lets the machine wake once for several programs.
    constexpr double kToleratedShare = 0.1;
    const double interval = 1.0 / timerRate(view);
    __weak NSView* weakView = view;
    NSTimer* const timer =
        [NSTimer timerWithTimeInterval:interval
                               repeats:YES
                                 block:^(NSTimer*) {
                                     @autoreleasepool {
                                         const auto running = frame;
                                         NSWindow* const window = weakView.window;
                                         if ((window.occlusionState & NSWindowOcclusionStateVisible) != 0)
                                             running(NSProcessInfo.processInfo.systemUptime);
                                     }
                                 }];
    timer.tolerance = interval * kToleratedShare;
    return timer;
}

/// Knows nothing of the display but its rate; looks itself whether anybody sees the view.
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
    if (@available(macOS 14.0, *)) {
        if (m_source == Source::Newest)
            return std::make_unique<LinkRun>(view, std::move(frame));
    }
    return std::make_unique<TimerRun>(view, std::move(frame));
}

} // namespace amperly
