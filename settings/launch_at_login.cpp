#include "settings/launch_at_login.h"

#include <utility>

namespace amperly {

LaunchAtLogin::LaunchAtLogin(LoginItem& item, std::function<void(const std::string&)> alert)
    : m_item(item), m_alert(std::move(alert)), m_status(item.status())
{
}

void LaunchAtLogin::set(bool on)
{
    if (const LoginItem::Failure failure = on ? m_item.registerItem() : m_item.unregisterItem())
        m_alert(*failure);
    readAgain();
}

void LaunchAtLogin::readAgain()
{
    m_status = m_item.status();
}

} // namespace amperly
