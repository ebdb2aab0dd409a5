#include "platform/simulated/desktop/fake_login_item.h"

namespace amperly {

LoginItem::Failure FakeLoginItem::registerItem()
{
    ++m_registrations;
    if (m_failure)
        return m_failure;
    m_status = m_approvalRequired ? LoginItemStatus::RequiresApproval : LoginItemStatus::Enabled;
    return std::nullopt;
}

LoginItem::Failure FakeLoginItem::registerUnasked()
{
    ++m_unaskedRegistrations;
    return registerItem();
}

LoginItem::Failure FakeLoginItem::unregisterItem()
{
    ++m_unregistrations;
    if (m_failure)
        return m_failure;
    m_status = LoginItemStatus::NotRegistered;
    return std::nullopt;
}

} // namespace amperly
