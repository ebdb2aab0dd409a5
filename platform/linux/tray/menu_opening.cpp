#include "platform/linux/tray/menu_opening.h"

namespace amperly {

MenuOpening::MenuOpening(Menu& menu, std::chrono::milliseconds unconfirmed) : m_menu(menu)
{
    m_expiry.setSingleShot(true);
    m_expiry.setInterval(unconfirmed);
    QObject::connect(&m_expiry, &QTimer::timeout, &m_context, [this] { closed(); });
}

void MenuOpening::aboutToShow(const void* exporter, TimePoint now)
{
    m_exporter = exporter;
    if (isOpen()) {
        if (now - m_lastQuestion < kSameOpening)
            return;
        closed();
    }
    m_lastQuestion = now;
    m_state = State::Announced;
    m_expiry.start();
    m_menu.announceWillOpen();
}

void MenuOpening::opened(const void* exporter)
{
    m_exporter = exporter;
    const bool news = !isOpen();
    m_state = State::Confirmed;
    m_expiry.stop();
    if (news)
        m_menu.announceWillOpen();
}

void MenuOpening::closed()
{
    if (!isOpen())
        return;
    m_state = State::Closed;
    m_expiry.stop();
    m_menu.announceDidClose();
}

void MenuOpening::choose(const MenuEntry& entry)
{
    closed();
    // Not from within the bus's dispatch: the action may open a window or end the program.
    if (entry.enabled && entry.activate)
        QMetaObject::invokeMethod(&m_context, entry.activate, Qt::QueuedConnection);
}

} // namespace amperly
