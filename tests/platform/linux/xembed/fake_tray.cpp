#include "tests/platform/linux/xembed/fake_tray.h"

#include "platform/linux/x11/x11_connection.h"

#include <array>

namespace amperly::test {

namespace {

constexpr int kPanelX = 100;
constexpr int kPanelY = 200;

xcb_visualid_t alphaVisual(const xcb_screen_t* screen)
{
    for (auto depth = xcb_screen_allowed_depths_iterator(screen); depth.rem > 0; xcb_depth_next(&depth)) {
        if (depth.data->depth == 32)
            return xcb_depth_visuals(depth.data)->visual_id;
    }
    return screen->root_visual;
}

} // namespace

FakeTray::FakeTray(const std::string& display, TrayManners manners)
    : m_connection(xcb_connect(display.c_str(), nullptr)), m_manners(manners)
{
    xcb_connection_t* connection = m_connection.get();
    m_screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    // The server gives the numbers of a connection that ended to the next one. News of the end of
    // another tray, still under way, must not be taken for news of this one.
    static int traysBefore = 0;
    for (int used = 0; used < traysBefore; ++used)
        static_cast<void>(xcb_generate_id(connection));
    ++traysBefore;
    m_owner = xcb_generate_id(connection);
    xcb_create_window(connection, 0, m_owner, m_screen->root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
        XCB_COPY_FROM_PARENT, 0, nullptr);
    m_panel = xcb_generate_id(connection);
    const std::array<std::uint32_t, 3> look{
        m_manners.background, 1, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE};
    xcb_create_window(connection, 0, m_panel, m_screen->root, kPanelX, kPanelY, 250, 64, 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, m_screen->root_visual,
        XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, look.data());
    xcb_map_window(connection, m_panel);
    if (m_manners.offersAlpha) {
        const xcb_visualid_t visual = alphaVisual(m_screen);
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, m_owner, atom("_NET_SYSTEM_TRAY_VISUAL"),
            XCB_ATOM_VISUALID, 32, 1, &visual);
    }
    m_opcode = atom("_NET_SYSTEM_TRAY_OPCODE");
    setOrientation(m_manners.vertical);
    announce();
    // Not by its socket: a reply that is waited for brings events along, and the socket is silent.
    QObject::connect(&m_turn, &QTimer::timeout, &m_turn, [this] { handleEvents(); });
    m_turn.start(2);
}

FakeTray::~FakeTray() = default;

xcb_atom_t FakeTray::atom(const std::string& name)
{
    return internAtom(m_connection.get(), name);
}

void FakeTray::announce()
{
    const xcb_atom_t selection = atom("_NET_SYSTEM_TRAY_S0");
    xcb_set_selection_owner(m_connection.get(), m_owner, selection, XCB_CURRENT_TIME);
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = m_screen->root;
    message.type = atom("MANAGER");
    message.data.data32[1] = selection;
    message.data.data32[2] = m_owner;
    xcb_send_event(m_connection.get(), 0, m_screen->root, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
        reinterpret_cast<const char*>(&message));
    xcb_flush(m_connection.get());
}

void FakeTray::handleEvents()
{
    while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())}) {
        switch (event->response_type & 0x7f) {
        case XCB_CLIENT_MESSAGE: {
            const auto* message = reinterpret_cast<const xcb_client_message_event_t*>(event.get());
            if (message->type == m_opcode && message->data.data32[1] == 0)
                takeIn(message->data.data32[2]);
            break;
        }
        case XCB_PROPERTY_NOTIFY: {
            const auto* change = reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
            if (change->window == m_icon && change->atom == XCB_ATOM_WM_NORMAL_HINTS)
                fitIcon();
            break;
        }
        default:
            break;
        }
    }
}

void FakeTray::takeIn(xcb_window_t icon)
{
    xcb_connection_t* connection = m_connection.get();
    ++m_docked;
    m_icon = icon;
    m_nameAtDocking = readName(icon);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection, icon, XCB_CW_EVENT_MASK, &events);
    xcb_change_save_set(connection, XCB_SET_MODE_INSERT, icon);
    xcb_reparent_window(connection, icon, m_panel, 0, 0);
    fitIcon();
    xcb_client_message_event_t notice{};
    notice.response_type = XCB_CLIENT_MESSAGE;
    notice.format = 32;
    notice.window = icon;
    notice.type = atom("_XEMBED");
    notice.data.data32[3] = m_panel;
    xcb_send_event(connection, 0, icon, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&notice));
    xcb_map_window(connection, icon);
    xcb_flush(connection);
}

void FakeTray::fitIcon()
{
    const PixelSize least = leastSize();
    if (least.height == 0)
        return;
    const int height = m_manners.iconHeight;
    resizeIconTo({m_manners.forcesSquare ? height : least.width * height / least.height, height});
}

PixelSize FakeTray::leastSize()
{
    const X11Reply<xcb_get_property_reply_t> hints(xcb_get_property_reply(m_connection.get(),
        xcb_get_property(
            m_connection.get(), 0, m_icon, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, 0, 18),
        nullptr));
    if (!hints || hints->value_len != 18)
        return {};
    const auto* values = static_cast<const std::int32_t*>(xcb_get_property_value(hints.get()));
    return {values[5], values[6]};
}

PixelSize FakeTray::iconSize()
{
    const X11Reply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(m_connection.get(), xcb_get_geometry(m_connection.get(), m_icon), nullptr));
    return geometry ? PixelSize{geometry->width, geometry->height} : PixelSize{};
}

bool FakeTray::iconExists()
{
    return iconSize() != PixelSize{};
}

std::string FakeTray::iconName()
{
    return readName(m_icon);
}

std::string FakeTray::readName(xcb_window_t window)
{
    const X11Reply<xcb_get_property_reply_t> name(xcb_get_property_reply(m_connection.get(),
        xcb_get_property(m_connection.get(), 0, window, atom("_NET_WM_NAME"), atom("UTF8_STRING"), 0, 100),
        nullptr));
    if (!name)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(name.get())),
        static_cast<std::size_t>(xcb_get_property_value_length(name.get()))};
}

std::uint32_t FakeTray::pixel(int x, int y)
{
    const X11Reply<xcb_get_image_reply_t> image(xcb_get_image_reply(m_connection.get(),
        xcb_get_image(m_connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_icon, static_cast<std::int16_t>(x),
            static_cast<std::int16_t>(y), 1, 1, ~0U),
        nullptr));
    return image ? *reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(image.get())) : 0;
}

std::uint32_t FakeTray::middlePixel()
{
    const PixelSize size = iconSize();
    return pixel(size.width / 2, size.height / 2);
}

std::uint32_t FakeTray::cornerPixel()
{
    return pixel(0, 0);
}

void FakeTray::resizeIcons(int height)
{
    m_manners.iconHeight = height;
    fitIcon();
}

void FakeTray::resizeIconTo(PixelSize size)
{
    const std::array<std::uint32_t, 2> values{
        static_cast<std::uint32_t>(size.width), static_cast<std::uint32_t>(size.height)};
    xcb_configure_window(
        m_connection.get(), m_icon, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values.data());
    xcb_flush(m_connection.get());
}

void FakeTray::setOrientation(bool vertical)
{
    const std::uint32_t value = vertical ? 1 : 0;
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_owner,
        atom("_NET_SYSTEM_TRAY_ORIENTATION"), XCB_ATOM_CARDINAL, 32, 1, &value);
    xcb_flush(m_connection.get());
}

void FakeTray::stateColors()
{
    const std::array<std::uint32_t, 12> channels{};
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_owner, atom("_NET_SYSTEM_TRAY_COLORS"),
        XCB_ATOM_CARDINAL, 32, channels.size(), channels.data());
    xcb_flush(m_connection.get());
}

void FakeTray::putOut()
{
    xcb_reparent_window(m_connection.get(), m_icon, m_screen->root, 0, 0);
    xcb_flush(m_connection.get());
}

void FakeTray::sendButton(std::uint8_t type, std::uint8_t button, int x, int y)
{
    xcb_button_press_event_t event{};
    event.response_type = type;
    event.detail = button;
    event.root = m_screen->root;
    event.event = m_icon;
    event.event_x = static_cast<std::int16_t>(x);
    event.event_y = static_cast<std::int16_t>(y);
    event.root_x = static_cast<std::int16_t>(kPanelX + x);
    event.root_y = static_cast<std::int16_t>(kPanelY + y);
    event.same_screen = 1;
    xcb_send_event(
        m_connection.get(), 0, m_icon, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&event));
    xcb_flush(m_connection.get());
}

void FakeTray::press(std::uint8_t button)
{
    sendButton(XCB_BUTTON_PRESS, button, 5, 5);
}

void FakeTray::click(std::uint8_t button, int x, int y)
{
    sendButton(XCB_BUTTON_PRESS, button, x, y);
    sendButton(XCB_BUTTON_RELEASE, button, x, y);
}

void FakeTray::movePointerOntoIcon()
{
    xcb_warp_pointer(m_connection.get(), XCB_NONE, m_icon, 0, 0, 0, 0, 5, 5);
    xcb_flush(m_connection.get());
}

void FakeTray::movePointerAway()
{
    xcb_warp_pointer(m_connection.get(), XCB_NONE, m_screen->root, 0, 0, 0, 0, 1, 1);
    xcb_flush(m_connection.get());
}

} // namespace amperly::test
