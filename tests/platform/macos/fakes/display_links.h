// Display links, as the fake views make them.
#pragma once

#import <QuartzCore/QuartzCore.h>

#include "tests/platform/macos/fakes/objects.h"

namespace amperly::fake_mac {

[[nodiscard]] CADisplayLink* makeDisplayLink(id target, SEL selector);

} // namespace amperly::fake_mac
