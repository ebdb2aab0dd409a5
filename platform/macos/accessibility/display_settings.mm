#include "platform/macos/accessibility/display_settings.h"

#import <AppKit/AppKit.h>

namespace amperly {

bool DisplaySettings::reducesMotion() const
{
    return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldReduceMotion == YES;
}

bool DisplaySettings::increasesContrast() const
{
    return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldIncreaseContrast == YES;
}

} // namespace amperly
