#include "platform/linux/popover/linux_popover_host.h"

#include <QCursor>

namespace amperly {

LinuxPopoverHost::LinuxPopoverHost(TimerSlack& slack, WindowKind kind, ReopenGuard::Inputs inputs)
    : m_slack(slack), m_kind(kind), m_guard(std::move(inputs))
{
}

LinuxPopoverHost::~LinuxPopoverHost()
{
    m_didClose = nullptr;
    m_window.reset();
    for (const QPointer<TransientWindow>& window : m_leaving)
        delete window;
}

bool LinuxPopoverHost::takesClick()
{
    return !m_guard.belongsToPress(QCursor::pos());
}

void LinuxPopoverHost::show(std::unique_ptr<QWidget> content, std::optional<ScreenPoint> anchor)
{
    close();
    m_hold.emplace(m_slack);
    m_window = makeTransientWindow(m_kind, std::move(content), CardEdge::Shadowed);
    m_window->onClosed([this](ClosedBy by) { retire(by); });
    m_window->open(anchor);
}

void LinuxPopoverHost::close()
{
    if (m_window)
        m_window->close();
}

void LinuxPopoverHost::retire(ClosedBy by)
{
    if (by == ClosedBy::OutsidePress)
        m_guard.closedByPress(QCursor::pos());
    TransientWindow* const leaving = m_window.release();
    std::erase_if(m_leaving, [](const QPointer<TransientWindow>& window) { return window.isNull(); });
    m_leaving.emplace_back(leaving);
    QObject::connect(leaving, &QObject::destroyed, &m_context, [this] {
        if (!m_window)
            m_hold.reset();
        if (m_didClose)
            m_didClose();
    });
    leaving->deleteLater();
}

} // namespace amperly
