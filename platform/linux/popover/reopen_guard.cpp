#include "platform/linux/popover/reopen_guard.h"

#include "platform/linux/x11/x11_connection.h"
#include "platform/linux/x11/x11_reply.h"

#include <utility>

namespace amperly {

ReopenGuard::Moment ReopenGuard::steadyClock()
{
    return std::chrono::duration_cast<Moment>(std::chrono::steady_clock::now().time_since_epoch());
}

bool ReopenGuard::isPointerPressed()
{
    xcb_connection_t* const connection = x11Connection();
    if (connection == nullptr)
        return false;
    constexpr std::uint32_t kAnyClick = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const X11Reply<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(connection, xcb_query_pointer(connection, root), nullptr));
    return pointer && (pointer->mask & kAnyClick) != 0;
}

ReopenGuard::ReopenGuard(Senses senses) : m_senses(std::move(senses))
{
    m_glances.setInterval(kGlance);
    QObject::connect(&m_glances, &QTimer::timeout, &m_glances, [this] { glance(); });
}

void ReopenGuard::closedByPress(QPoint pointer)
{
    m_press = Press{m_senses.clock(), pointer};
    if (m_senses.isPressed())
        m_glances.start();
}

void ReopenGuard::glance()
{
    if (m_senses.isPressed())
        return;
    m_glances.stop();
    m_press->moment = m_senses.clock();
}

bool ReopenGuard::belongsToPress(QPoint pointer)
{
    const bool wasHeld = isHeld();
    m_glances.stop();
    const std::optional<Press> press = std::exchange(m_press, std::nullopt);
    return press && (wasHeld || m_senses.clock() - press->moment < kOneClick)
        && (pointer - press->pointer).manhattanLength() <= kOnePlace;
}

} // namespace amperly
