#include "platform/macos/shell/run_loop_timer.h"

#import <Foundation/Foundation.h>

#include <utility>

namespace amperly {
namespace {

NSTimer* makeTimer(double interval, std::function<void()> action)
{
    // The block holds the action, so that one that ends its own timer runs to its end.
    const auto held = std::make_shared<const std::function<void()>>(std::move(action));
    return [NSTimer timerWithTimeInterval:interval
                                  repeats:YES
                                    block:^(NSTimer*) {
                                        // A run loop that the toolkit runs need not have one.
                                        @autoreleasepool {
                                            const auto running = held;
                                            (*running)();
                                        }
                                    }];
}

class RunLoopTimer : public RepeatingTimer {
public:
    RunLoopTimer(double interval, double tolerance, std::function<void()> action)
        : m_interval(interval), m_tolerance(tolerance), m_timer(makeTimer(interval, std::move(action)))
    {
        m_timer.tolerance = tolerance;
        [NSRunLoop.mainRunLoop addTimer:m_timer forMode:NSRunLoopCommonModes];
    }
    ~RunLoopTimer() override { [m_timer invalidate]; }
    RunLoopTimer(const RunLoopTimer&) = delete;
    RunLoopTimer& operator=(const RunLoopTimer&) = delete;

    [[nodiscard]] double intervalSeconds() const override { return m_interval; }
    [[nodiscard]] double toleranceSeconds() const override { return m_tolerance; }

private:
    double m_interval;
    double m_tolerance;
    NSTimer* m_timer;
};

} // namespace

std::unique_ptr<RepeatingTimer> RunLoopTimerSource::start(
    double intervalSeconds, double toleranceSeconds, std::function<void()> action)
{
    return std::make_unique<RunLoopTimer>(intervalSeconds, toleranceSeconds, std::move(action));
}

} // namespace amperly
