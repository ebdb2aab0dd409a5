#include "platform/linux/popover/reopen_guard.h"

#include "platform/linux/x11/x11_connection.h"

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

ReopenGuard::ReopenGuard(Inputs inputs) : m_inputs(std::move(inputs))
{
    m_poll.setInterval(kPollInterval);
    QObject::connect(&m_poll, &QTimer::timeout, &m_poll, [this] { poll(); });
}

void ReopenGuard::closedByPress(QPoint pointer)
{
    m_press = Press{m_inputs.clock(), pointer};
    if (m_inputs.isPressed())
        m_poll.start();
}

void ReopenGuard::poll()
{
    if (m_inputs.isPressed())
        return;
    m_poll.stop();
    m_press->moment = m_inputs.clock();
}

bool ReopenGuard::belongsToPress(QPoint pointer)
{
    const bool wasHeld = isHeld();
    m_poll.stop();
    const std::optional<Press> press = std::exchange(m_press, std::nullopt);
    return press && (wasHeld || m_inputs.clock() - press->moment < kClickTime)
        && (pointer - press->pointer).manhattanLength() <= kClickDistance;
}

} // namespace amperly
