// The threads and the work in hand of the pretended process.
#pragma once

#include "tests/platform/macos/fakes/objects.h"

namespace amperly::fake_mac {

/// What happens while one lives, happens on another thread.
class OtherThread {
public:
    OtherThread();
    ~OtherThread();
    OtherThread(const OtherThread&) = delete;
    OtherThread& operator=(const OtherThread&) = delete;
};

/// Forgets timers and queued work.
void resetProcess();

} // namespace amperly::fake_mac
