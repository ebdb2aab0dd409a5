#include "platform/linux/clock/window_visibility.h"

#include "platform/linux/x11/x11_connection.h"

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <utility>
#include <xcb/dpms.h>

namespace amperly {

namespace {

class X11WindowVisibility : public WindowVisibility, public QAbstractNativeEventFilter {
public:
    X11WindowVisibility(xcb_connection_t* connection, xcb_window_t window, std::function<void()> changed);
    ~X11WindowVisibility() override;
    X11WindowVisibility(const X11WindowVisibility&) = delete;
    X11WindowVisibility& operator=(const X11WindowVisibility&) = delete;

    [[nodiscard]] bool isCovered() const override { return m_covered; }
    [[nodiscard]] bool isScreenOff() const override;

    bool nativeEventFilter(const QByteArray& kind, void* message, qintptr* result) override;

private:
    xcb_connection_t* m_connection;
    xcb_window_t m_window;
    std::function<void()> m_changed;
    bool m_covered = false;
    bool m_screenCanBeOff = false;
};

X11WindowVisibility::X11WindowVisibility(
    xcb_connection_t* connection, xcb_window_t window, std::function<void()> changed)
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

X11WindowVisibility::~X11WindowVisibility()
{
    if (qGuiApp)
        qGuiApp->removeNativeEventFilter(this);
}

bool X11WindowVisibility::isScreenOff() const
{
    if (!m_screenCanBeOff)
        return false;
    const X11Reply<xcb_dpms_info_reply_t> info(
        xcb_dpms_info_reply(m_connection, xcb_dpms_info(m_connection), nullptr));
    return info && info->state != 0 && info->power_level != XCB_DPMS_DPMS_MODE_ON;
}

bool X11WindowVisibility::nativeEventFilter(const QByteArray&, void* message, qintptr*)
{
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7f) != XCB_VISIBILITY_NOTIFY)
        return false;
    const auto* change = reinterpret_cast<const xcb_visibility_notify_event_t*>(event);
    if (change->window != m_window)
        return false;
    const bool covered = change->state == XCB_VISIBILITY_FULLY_OBSCURED;
    if (std::exchange(m_covered, covered) != covered)
        m_changed();
    return false;
}

} // namespace

std::unique_ptr<WindowVisibility> x11WindowVisibility(std::uint32_t window, std::function<void()> changed)
{
    xcb_connection_t* const connection = x11Connection();
    if (connection == nullptr)
        return nullptr;
    return std::make_unique<X11WindowVisibility>(connection, window, std::move(changed));
}

} // namespace amperly
