// The fake Foundation's process: its bundle and its log, threads and queues, timers and their loop.

#include "tests/platform/macos/fakes/process.h"

#include <algorithm>
#include <utility>

// The classes do what is needed of them and nothing more.
#pragma clang diagnostic ignored "-Wincomplete-implementation"
#pragma clang diagnostic ignored "-Wobjc-designated-initializers"
#pragma clang diagnostic ignored "-Wprotocol"
#pragma clang diagnostic ignored "-Wunused-parameter"

using namespace amperly::fake_mac;

namespace {

struct Timer {
    NSTimer* timer;
    double interval;
    double next;
};

struct TimerFields {
    double interval = 0.0;
    double tolerance = 0.0;
    void (^block)(NSTimer*) = nullptr;
};

std::vector<Timer> timers;
std::vector<void (^)(void)> queued;
bool onMainThread = true;

template <typename Block>
Block kept(Block block)
{
    return reinterpret_cast<Block>(const_cast<void*>(keptBlock(reinterpret_cast<const void*>(block))));
}

} // namespace

@implementation NSBundle

+ (NSBundle*)mainBundle
{
    static NSBundle* const bundle = [NSBundle new];
    return bundle;
}

- (NSString*)bundlePath
{
    return makeString(stage().system.bundlePath);
}

- (id)objectForInfoDictionaryKey:(NSString*)key
{
    if (textOf(key) != "CFBundleShortVersionString")
        return nil;
    const auto& version = stage().system.bundleVersion;
    if (const auto* text = std::get_if<std::string>(&version))
        return makeString(*text);
    if (const auto* number = std::get_if<int>(&version))
        return [NSNumber numberWithInt:*number];
    return nil;
}

@end

@implementation NSProcessInfo

+ (NSProcessInfo*)processInfo
{
    static NSProcessInfo* const info = [NSProcessInfo new];
    return info;
}

- (BOOL)isLowPowerModeEnabled
{
    return stage().system.savesPower ? YES : NO;
}

- (NSTimeInterval)systemUptime
{
    return stage().system.uptime;
}

@end

@implementation NSThread

+ (BOOL)isMainThread
{
    return onMainThread ? YES : NO;
}

@end

@implementation NSOperationQueue

+ (NSOperationQueue*)mainQueue
{
    static NSOperationQueue* const queue = [NSOperationQueue new];
    return queue;
}

- (void)addOperationWithBlock:(void (^)(void))block
{
    queued.push_back(kept(block));
}

@end

@implementation NSAutoreleasePool

- (instancetype)init
{
    ++stage().autoreleasePools;
    return self;
}

- (void)drain
{
    --stage().autoreleasePools;
}

@end

@implementation NSTimer

+ (NSTimer*)timerWithTimeInterval:(NSTimeInterval)interval
                          repeats:(BOOL)repeats
                            block:(void (^)(NSTimer*))block
{
    if (!repeats)
        fault("a timer that fires once");
    NSTimer* const timer = [NSTimer new];
    fields<TimerFields>(timer).interval = interval;
    fields<TimerFields>(timer).block = kept(block);
    return timer;
}

- (NSTimeInterval)tolerance
{
    return fields<TimerFields>(self).tolerance;
}

- (void)setTolerance:(NSTimeInterval)tolerance
{
    fields<TimerFields>(self).tolerance = tolerance;
    stage().timerTolerance = tolerance;
}

- (void)invalidate
{
    std::erase_if(timers, [self](const Timer& each) { return each.timer == self; });
    stage().timers = static_cast<int>(timers.size());
}

@end

const NSRunLoopMode NSRunLoopCommonModes = @"kCFRunLoopCommonModes";

@implementation NSRunLoop

+ (NSRunLoop*)mainRunLoop
{
    static NSRunLoop* const loop = [NSRunLoop new];
    return loop;
}

- (void)addTimer:(NSTimer*)timer forMode:(NSRunLoopMode)mode
{
    if (textOf(mode) != textOf(NSRunLoopCommonModes))
        fault("a timer that stands still while a menu is open");
    const double interval = fields<TimerFields>(timer).interval;
    timers.push_back({timer, interval, stage().system.uptime + interval});
    stage().timers = static_cast<int>(timers.size());
}

@end

void NSLog(NSString* format, ...)
{
    if (textOf(format) != "%@")
        fault("a log line that is taken for a format");
    va_list arguments;
    va_start(arguments, format);
    stage().application.log += textOf(va_arg(arguments, NSString*)) + '\n';
    va_end(arguments);
}

namespace amperly::fake_mac {

OtherThread::OtherThread()
{
    onMainThread = false;
}

OtherThread::~OtherThread()
{
    onMainThread = true;
}

void resetProcess()
{
    timers.clear();
    queued.clear();
}

void advance(double seconds)
{
    const double end = stage().system.uptime + seconds;
    for (;;) {
        const auto soonest = std::min_element(timers.begin(), timers.end(),
            [](const Timer& one, const Timer& other) { return one.next < other.next; });
        if (soonest == timers.end() || soonest->next > end)
            break;
        stage().system.uptime = soonest->next;
        soonest->next += soonest->interval;
        NSTimer* const timer = soonest->timer;
        fields<TimerFields>(timer).block(timer);
    }
    stage().system.uptime = end;
}

void runMainQueue()
{
    const std::vector<void (^)(void)> blocks = std::exchange(queued, {});
    for (const auto block : blocks)
        block();
}

} // namespace amperly::fake_mac
