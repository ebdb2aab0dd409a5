// Tells when the user has chosen another region, or changed how numbers are written in it.
#pragma once

#include "platform/macos/foundation/notification_observer.h"

namespace amperly {

class LocaleWatch {
public:
    explicit LocaleWatch(std::function<void()> changed);

private:
    NotificationObserver m_observer;
};

} // namespace amperly
