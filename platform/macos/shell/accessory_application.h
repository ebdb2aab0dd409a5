// The application as the system sees it: one without Dock icon and main menu, that is told when
// the user opens it again while it runs.
//
// It has to be made before the toolkit's application object, which then hands on what it does
// not answer itself.
#pragma once

#import <AppKit/AppKit.h>

#include <functional>

@class AMPApplicationDelegate;

namespace amperly {

class AccessoryApplication {
public:
    AccessoryApplication();
    ~AccessoryApplication();
    AccessoryApplication(const AccessoryApplication&) = delete;
    AccessoryApplication& operator=(const AccessoryApplication&) = delete;

    /// Called when the user opens the application while it runs.
    void onReopen(std::function<void()> handler);

private:
    AMPApplicationDelegate* m_delegate;
};

} // namespace amperly
