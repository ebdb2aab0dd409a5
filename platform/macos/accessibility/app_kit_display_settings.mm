#include "platform/macos/accessibility/app_kit_display_settings.h"

#import <AppKit/AppKit.h>

#include <utility>

namespace amperly {

bool AppKitDisplaySettings::reducesMotion() const
{
    return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldReduceMotion == YES;
}

bool AppKitDisplaySettings::increasesContrast() const
{
    return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldIncreaseContrast == YES;
}

void AppKitDisplaySettings::onDidChange(std::function<void()> handler)
{
    m_observer = std::make_unique<NotificationObserver>(NSWorkspace.sharedWorkspace.notificationCenter,
        NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification, std::move(handler));
}

} // namespace amperly
