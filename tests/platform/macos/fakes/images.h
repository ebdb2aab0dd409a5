// What the fake images hold.
#pragma once

#import <AppKit/AppKit.h>

#include "tests/platform/macos/fakes/objects.h"

namespace amperly::fake_mac {

struct ImageFields {
    NSSize size{};
    std::vector<NSBitmapImageRep*> representations;
    BOOL isTemplate = NO;
    bool isSymbol = false;
};

} // namespace amperly::fake_mac
