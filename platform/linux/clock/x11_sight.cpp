#include "platform/linux/clock/x11_sight.h"

#include "platform/linux/x11/x11_connection.h"
#include "platform/linux/x11/x11_reply.h"

#include <QGuiApplication>
#include <utility>
#include <xcb/dpms.h>

namespace amperly {

std::unique_ptr<X11Sight> X11Sight::of(xcb_window_t window, std::function<void()> changed)
{
    xcb_connection_t* const connection = x11Connection();
    if (connection == nullptr)
        return nullptr;
    return std::unique_ptr<X11Sight>(new X11Sight(connection, window, std::move(changed)));
}

X11Sight::X11Sight(xcb_connection_t* connection, xcb_window_t window, std::function<void()> changed)
    : m_connection(connection), m_window(window), m_changed(std::move(changed))
{
    // The toolkit does not ask for these events, but has asked for others of the same window.
    const X11Reply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        m_connection, xcb_get_window_attributes(m_connection, m_window), nullptr));
    if (attributes) {
        const std::uint32_t events = attributes->your_event_mask | XCB_EVENT_MASK_VISIBILITY_CHANGE;
        xcb_change_window_attributes(m_connection, m_window, XCB_CW_EVENT_MASK, &events);
    }
    const xcb_query_extension_reply_t* const extension = xcb_get_extension_data(m_connection, &xcb_dpms_id);
    m_screenCanBeOff = extension != nullptr && extension->present != 0;
    qGuiApp->installNativeEventFilter(this);
}

X11Sight::~X11Sight()
{
    if (qGuiApp)
        qGuiApp->removeNativeEventFilter(this);
}

bool X11Sight::isScreenOff() const
{
    if (!m_screenCanBeOff)
        return false;
    const X11Reply<xcb_dpms_info_reply_t> info(
        xcb_dpms_info_reply(m_connection, xcb_dpms_info(m_connection), nullptr));
    return info && info->state != 0 && info->power_level != XCB_DPMS_DPMS_MODE_ON;
}

bool X11Sight::nativeEventFilter(const QByteArray&, void* message, qintptr*)
{
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7f) != XCB_VISIBILITY_NOTIFY)
        return false;
    const auto* sight = reinterpret_cast<const xcb_visibility_notify_event_t*>(event);
    if (sight->window != m_window)
        return false;
    const bool covered = sight->state == XCB_VISIBILITY_FULLY_OBSCURED;
    if (std::exchange(m_covered, covered) != covered)
        m_changed();
    return false;
}

} // namespace amperly
