#include "platform/macos/locale/locale_watch.h"

#include <utility>

namespace amperly {

LocaleWatch::LocaleWatch(std::function<void()> changed)
    : m_observer(NSNotificationCenter.defaultCenter, NSCurrentLocaleDidChangeNotification, std::move(changed))
{
}

} // namespace amperly
