#include "platform/linux/tray/x11_tray_colors.h"

#include "platform/linux/x11/x11_connection.h"

#include <QGuiApplication>
#include <array>
#include <cstring>
#include <utility>

namespace amperly {

std::optional<Ink> decodeTrayColors(std::span<const std::uint32_t> channels)
{
    if (channels.size() < 3)
        return std::nullopt;
    const auto highByte = [](std::uint32_t channel) { return (channel >> 8) & 0xff; };
    return Ink{0xff000000 | highByte(channels[0]) << 16 | highByte(channels[1]) << 8 | highByte(channels[2])};
}

std::unique_ptr<X11TrayColors> X11TrayColors::create()
{
    xcb_connection_t* const connection = x11Connection();
    return connection ? std::unique_ptr<X11TrayColors>(new X11TrayColors(connection)) : nullptr;
}

X11TrayColors::X11TrayColors(xcb_connection_t* connection) : m_connection(connection)
{
    std::array names{
        X11AtomName{&m_selection, "_NET_SYSTEM_TRAY_S0"},
        X11AtomName{&m_colors, "_NET_SYSTEM_TRAY_COLORS"},
        X11AtomName{&m_manager, "MANAGER"},
    };
    internAtoms(m_connection, names);
    qGuiApp->installNativeEventFilter(this);
    refresh();
}

X11TrayColors::~X11TrayColors()
{
    if (qGuiApp)
        qGuiApp->removeNativeEventFilter(this);
}

void X11TrayColors::refresh()
{
    m_tray = selectionOwner(m_connection, m_selection);
    std::optional<Ink> ink;
    if (m_tray != XCB_WINDOW_NONE) {
        // Before the reading, so that no change is missed between the two.
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(m_connection, m_tray, XCB_CW_EVENT_MASK, &events);
        constexpr std::uint32_t kChannels = 12;
        const X11Reply<xcb_get_property_reply_t> property(xcb_get_property_reply(m_connection,
            xcb_get_property(m_connection, 0, m_tray, m_colors, XCB_ATOM_CARDINAL, 0, kChannels), nullptr));
        if (property && property->format == 32) {
            std::array<std::uint32_t, kChannels> channels{};
            const auto bytes = static_cast<std::size_t>(xcb_get_property_value_length(property.get()));
            std::memcpy(channels.data(), xcb_get_property_value(property.get()), bytes);
            ink = decodeTrayColors({channels.data(), bytes / sizeof(std::uint32_t)});
        }
    }
    if (std::exchange(m_ink, ink) != ink && m_changed)
        m_changed();
}

bool X11TrayColors::nativeEventFilter(const QByteArray&, void* message, qintptr*)
{
    // Installed on X11 only, where every message is an event of this connection.
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    switch (event->response_type & 0x7f) {
    case XCB_PROPERTY_NOTIFY: {
        const auto* change = reinterpret_cast<const xcb_property_notify_event_t*>(event);
        if (change->window == m_tray && change->atom == m_colors)
            refresh();
        break;
    }
    case XCB_DESTROY_NOTIFY: {
        const auto* end = reinterpret_cast<const xcb_destroy_notify_event_t*>(event);
        if (m_tray != XCB_WINDOW_NONE && end->window == m_tray)
            refresh();
        break;
    }
    case XCB_CLIENT_MESSAGE: {
        const auto* news = reinterpret_cast<const xcb_client_message_event_t*>(event);
        if (news->type == m_manager && news->data.data32[1] == m_selection)
            refresh();
        break;
    }
    default:
        break;
    }
    return false;
}

} // namespace amperly
