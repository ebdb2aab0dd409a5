#include "platform/linux/xembed/xembed_item.h"

#include "platform/linux/x11/x11_connection.h"

#include <QGuiApplication>
#include <QScreen>
#include <cmath>
#include <utility>
#include <vector>

namespace amperly {

namespace {

constexpr xcb_button_t kLeftButton = 1;
constexpr xcb_button_t kMiddleButton = 2;
constexpr xcb_button_t kRightButton = 3;

template <typename Event>
const Event& as(const xcb_generic_event_t& event)
{
    return reinterpret_cast<const Event&>(event);
}

/// The screen that DISPLAY names, which is the toolkit's primary one.
int defaultScreenNumber()
{
    char* host = nullptr;
    int display = 0;
    int screen = 0;
    if (xcb_parse_display(nullptr, &host, &display, &screen) == 0)
        return 0;
    std::free(host);
    return screen;
}

/// With the screens that there are now.
ScreenPoint logicalPoint(ScreenPoint native)
{
    std::vector<ScaledScreen> screens;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect area = screen->geometry();
        screens.push_back({area.x(), area.y(), area.width(), area.height(), screen->devicePixelRatio()});
    }
    return logicalPoint(native, screens);
}

} // namespace

std::unique_ptr<XEmbedItem> XEmbedItem::create(XEmbedItemParts parts)
{
    xcb_connection_t* const connection = x11Connection();
    if (!connection)
        return nullptr;
    const int number = defaultScreenNumber();
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int index = 0; index < number && screens.rem > 1; ++index)
        xcb_screen_next(&screens);
    // Pixels are written as 32 bits each; a screen of fewer colours has no tray worth the code.
    if (screens.rem == 0 || screens.data->root_depth != 24)
        return nullptr;
    X11Screen x11{.connection = connection, .screen = screens.data};
    return std::unique_ptr<XEmbedItem>(new XEmbedItem(std::move(parts), x11, number));
}

XEmbedItem::XEmbedItem(XEmbedItemParts parts, X11Screen x11, int screenNumber)
    : m_parts(std::move(parts)), m_x11(x11), m_screenNumber(screenNumber), m_hoverTip(m_parts.hoverDelay)
{
    m_settled.setSingleShot(true);
    m_settled.setInterval(kTraySettles);
    QObject::connect(&m_settled, &QTimer::timeout, &m_context, [this] { repaint(); });
}

XEmbedItem::~XEmbedItem()
{
    // Without the application there is no connection left to take the window away over.
    if (qGuiApp)
        hide();
    else
        static_cast<void>(m_window.release());
}

void XEmbedItem::show(
    const StatusPicture& picture, std::optional<std::string_view> toolTip, std::string_view spokenLabel)
{
    if (!std::exchange(m_shown, true)) {
        if (m_x11.atoms.selection == XCB_ATOM_NONE)
            m_x11.atoms = internTrayAtoms(m_x11.connection, m_screenNumber);
        qGuiApp->installNativeEventFilter(this);
        m_trayToBeLookedFor = true;
    }
    m_hoverTip.setText(toolTip);
    const double widthPoints = picture.widthPoints();
    if (!m_window && std::exchange(m_trayToBeLookedFor, false))
        dock(widthPoints);
    if (!m_window)
        return;

    const PixelSize size = m_window->size();
    m_window->wish(wishedSize(widthPoints, size.height, m_tray->orientation));
    m_window->setName(spokenLabel);
    drawItem(picture, chooseLayout(widthPoints, size), size, m_nextMask);
    if (m_nextMask == m_mask)
        return;
    std::swap(m_mask, m_nextMask);
    repaint();
}

void XEmbedItem::hide()
{
    if (!std::exchange(m_shown, false))
        return;
    qGuiApp->removeNativeEventFilter(this);
    dropWindow();
    m_tray.reset();
}

void XEmbedItem::dock(double widthPoints)
{
    m_tray = findTray(m_x11.connection, m_x11.atoms);
    if (!m_tray)
        return;
    const int height = static_cast<int>(std::lround(kTrayIconPixels * qGuiApp->devicePixelRatio()));
    m_window
        = std::make_unique<TrayWindow>(m_x11, *m_tray, wishedSize(widthPoints, height, m_tray->orientation));
}

bool XEmbedItem::nativeEventFilter(const QByteArray&, void* message, qintptr*)
{
    // Installed on X11 only, where every message is an event of this connection. All of them go on
    // to the toolkit: it keeps the time of the user's last action by them.
    const auto& event = *static_cast<const xcb_generic_event_t*>(message);
    switch (event.response_type & 0x7f) {
    case XCB_CLIENT_MESSAGE:
        handleMessage(as<xcb_client_message_event_t>(event));
        break;
    case XCB_DESTROY_NOTIFY: {
        const xcb_window_t window = as<xcb_destroy_notify_event_t>(event).window;
        if (m_tray && m_tray->owner == window)
            lookForTray();
        else if (isOurs(window))
            dropWindow();
        break;
    }
    case XCB_REPARENT_NOTIFY:
        handleReparenting(as<xcb_reparent_notify_event_t>(event));
        break;
    case XCB_CONFIGURE_NOTIFY:
        handleResizing(as<xcb_configure_notify_event_t>(event));
        break;
    case XCB_EXPOSE: {
        const auto& exposure = as<xcb_expose_event_t>(event);
        if (isOurs(exposure.window) && exposure.count == 0) {
            // Not all trays send the notice, but none shows what it has not taken in.
            m_window->embedded();
            m_window->exposed();
            repaint();
            if (m_window->hasAlpha())
                m_settled.start();
        }
        break;
    }
    case XCB_PROPERTY_NOTIFY:
        handleTrayProperty(as<xcb_property_notify_event_t>(event));
        break;
    case XCB_BUTTON_PRESS:
        if (isOurs(as<xcb_button_press_event_t>(event).event))
            m_hoverTip.leave();
        break;
    case XCB_BUTTON_RELEASE:
        handleRelease(as<xcb_button_release_event_t>(event));
        break;
    case XCB_ENTER_NOTIFY: {
        const auto& arrival = as<xcb_enter_notify_event_t>(event);
        if (isOurs(arrival.event))
            m_hoverTip.enter(logicalPoint({arrival.root_x, arrival.root_y}));
        break;
    }
    case XCB_LEAVE_NOTIFY:
        if (isOurs(as<xcb_leave_notify_event_t>(event).event))
            m_hoverTip.leave();
        break;
    default:
        break;
    }
    return false;
}

void XEmbedItem::handleMessage(const xcb_client_message_event_t& message)
{
    if (const auto owner = announcedTray(message, m_x11.atoms)) {
        if (!m_window || m_tray->owner != *owner)
            lookForTray();
    } else if (isOurs(message.window) && isEmbeddedNotice(message, m_x11.atoms)) {
        m_window->embedded();
    }
}

void XEmbedItem::handleReparenting(const xcb_reparent_notify_event_t& event)
{
    if (!isOurs(event.window))
        return;
    // Back on the root: the tray put it out, or ended. On the root it would be a stray window.
    if (event.parent != m_x11.screen->root)
        m_insideTray = true;
    else if (m_insideTray)
        dropWindow();
}

void XEmbedItem::handleResizing(const xcb_configure_notify_event_t& event)
{
    if (isOurs(event.window) && m_window->resized({event.width, event.height}))
        wantPicture();
}

void XEmbedItem::handleTrayProperty(const xcb_property_notify_event_t& change)
{
    if (!m_window || m_tray->owner != change.window)
        return;
    if (change.atom == m_x11.atoms.orientation) {
        m_tray->orientation = readOrientation(m_x11.connection, m_tray->owner, m_x11.atoms);
        wantPicture();
    }
}

void XEmbedItem::handleRelease(const xcb_button_release_event_t& event)
{
    // The release, because until then the pointer belongs to this window and no menu gets it.
    if (!isOurs(event.event) || !m_clickHandler)
        return;
    const PixelSize size = m_window->size();
    if (event.event_x < 0 || event.event_y < 0 || event.event_x >= size.width || event.event_y >= size.height)
        return;
    const ScreenPoint anchor = logicalPoint({event.root_x, event.root_y});
    switch (event.detail) {
    case kLeftButton:
    case kMiddleButton:
        m_clickHandler({.button = ClickButton::Left, .anchor = anchor});
        break;
    case kRightButton:
        m_clickHandler({.button = ClickButton::Right, .anchor = anchor});
        break;
    default:
        break;
    }
}

void XEmbedItem::lookForTray()
{
    dropWindow();
    m_tray.reset();
    m_trayToBeLookedFor = true;
    wantPicture();
}

void XEmbedItem::dropWindow()
{
    m_hoverTip.leave();
    m_settled.stop();
    m_window.reset();
    m_insideTray = false;
    m_mask.clear(0, 0);
}

void XEmbedItem::repaint()
{
    if (m_window)
        m_window->paint(m_mask, m_parts.ink());
}

void XEmbedItem::wantPicture()
{
    if (m_pictureWanted)
        m_pictureWanted();
}

bool XEmbedItem::isOurs(xcb_window_t window) const
{
    return m_window && m_window->id() == window;
}

ScreenPoint logicalPoint(ScreenPoint native, std::span<const ScaledScreen> screens)
{
    for (const ScaledScreen& screen : screens) {
        const double x = (native.x - screen.x) / screen.scale;
        const double y = (native.y - screen.y) / screen.scale;
        if (x >= 0 && y >= 0 && x < screen.width && y < screen.height)
            return {screen.x + static_cast<int>(std::floor(x)), screen.y + static_cast<int>(std::floor(y))};
    }
    return native;
}

} // namespace amperly
