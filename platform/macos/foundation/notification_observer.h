// Hears of one kind of the system's notifications, on the main thread, for as long as it lives.
#pragma once

#import <Foundation/Foundation.h>

#include <functional>

@class AMPNotificationTarget;

namespace amperly {

class NotificationObserver {
public:
    NotificationObserver(
        NSNotificationCenter* center, NSNotificationName name, std::function<void()> handler);
    ~NotificationObserver();
    NotificationObserver(const NotificationObserver&) = delete;
    NotificationObserver& operator=(const NotificationObserver&) = delete;

private:
    NSNotificationCenter* m_center;
    AMPNotificationTarget* m_target;
};

} // namespace amperly
