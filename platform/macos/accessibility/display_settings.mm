#include "platform/macos/accessibility/display_settings.h"

#import <AppKit/AppKit.h>

#include <utility>

namespace amperly {

bool DisplaySettings::reducesMotion() const
{
    return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldReduceMotion == YES;
}

bool DisplaySettings::increasesContrast() const
{
    return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldIncreaseContrast == YES;
}

void DisplaySettings::onDidChange(std::function<void()> handler)
{
    m_observer = std::make_unique<NotificationObserver>(NSWorkspace.sharedWorkspace.notificationCenter,
        NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification, std::move(handler));
}

} // namespace amperly
