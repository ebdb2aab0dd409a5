// Lets the main run loop run for a test.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

namespace amperly {

/// Until `condition` holds, but no longer than some seconds; tells whether it does.
template <typename Condition>
[[nodiscard]] bool runUntil(Condition condition)
{
    constexpr int kMostTurns = 1000;
    constexpr double kTurnSeconds = 0.01;
    for (int turn = 0; turn < kMostTurns && !condition(); ++turn)
        CFRunLoopRunInMode(kCFRunLoopDefaultMode, kTurnSeconds, false);
    return condition();
}

} // namespace amperly
