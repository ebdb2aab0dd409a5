#include "platform/linux/xembed/tray_protocol.h"

#include "platform/linux/x11/x11_connection.h"

#include <string>

namespace amperly {

namespace {

constexpr std::uint32_t kRequestDock = 0;
constexpr std::uint32_t kEmbeddedNotify = 0;
constexpr std::uint32_t kVertical = 1;

/// The one number that a property holds, in the way of X: nothing if it is not there.
std::optional<std::uint32_t> firstNumber(const xcb_get_property_reply_t& property)
{
    if (property.format != 32 || property.value_len == 0)
        return std::nullopt;
    return *static_cast<const std::uint32_t*>(xcb_get_property_value(&property));
}

} // namespace

TrayAtoms internTrayAtoms(xcb_connection_t* connection, int screen)
{
    const std::string selection = "_NET_SYSTEM_TRAY_S" + std::to_string(screen);
    TrayAtoms atoms;
    std::array names{
        X11AtomName{&atoms.selection, selection},
        X11AtomName{&atoms.manager, "MANAGER"},
        X11AtomName{&atoms.opcode, "_NET_SYSTEM_TRAY_OPCODE"},
        X11AtomName{&atoms.visual, "_NET_SYSTEM_TRAY_VISUAL"},
        X11AtomName{&atoms.orientation, "_NET_SYSTEM_TRAY_ORIENTATION"},
        X11AtomName{&atoms.xembed, "_XEMBED"},
        X11AtomName{&atoms.xembedInfo, "_XEMBED_INFO"},
        X11AtomName{&atoms.windowName, "_NET_WM_NAME"},
        X11AtomName{&atoms.utf8, "UTF8_STRING"},
    };
    internAtoms(connection, names);
    return atoms;
}

std::optional<FoundTray> findTray(xcb_connection_t* connection, const TrayAtoms& atoms)
{
    FoundTray tray{.owner = selectionOwner(connection, atoms.selection)};
    if (tray.owner == XCB_WINDOW_NONE)
        return std::nullopt;
    // One connection has one mask for each window: whoever follows the tray's colours over the
    // same connection needs the property changes.
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    ignoreOutcome(
        connection, xcb_change_window_attributes_checked(connection, tray.owner, XCB_CW_EVENT_MASK, &events));
    const X11Reply<xcb_get_property_reply_t> visual(xcb_get_property_reply(connection,
        xcb_get_property(connection, 0, tray.owner, atoms.visual, XCB_ATOM_VISUALID, 0, 1), nullptr));
    // Refused: the tray ended before its end was listened for. The next one will announce itself.
    if (!visual)
        return std::nullopt;
    tray.visual = firstNumber(*visual).value_or(XCB_NONE);
    tray.orientation = readOrientation(connection, tray.owner, atoms);
    return tray;
}

TrayOrientation readOrientation(xcb_connection_t* connection, xcb_window_t owner, const TrayAtoms& atoms)
{
    const X11Reply<xcb_get_property_reply_t> orientation(xcb_get_property_reply(connection,
        xcb_get_property(connection, 0, owner, atoms.orientation, XCB_ATOM_CARDINAL, 0, 1), nullptr));
    const bool vertical = orientation && firstNumber(*orientation) == kVertical;
    return vertical ? TrayOrientation::Vertical : TrayOrientation::Horizontal;
}

std::optional<xcb_window_t> announcedTray(const xcb_client_message_event_t& message, const TrayAtoms& atoms)
{
    if (message.type != atoms.manager || message.format != 32 || message.data.data32[1] != atoms.selection)
        return std::nullopt;
    return message.data.data32[2];
}

xcb_client_message_event_t dockRequest(xcb_window_t tray, xcb_window_t icon, const TrayAtoms& atoms)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = tray;
    message.type = atoms.opcode;
    message.data.data32[0] = XCB_CURRENT_TIME;
    message.data.data32[1] = kRequestDock;
    message.data.data32[2] = icon;
    return message;
}

bool isEmbeddedNotice(const xcb_client_message_event_t& message, const TrayAtoms& atoms)
{
    return message.type == atoms.xembed && message.format == 32 && message.data.data32[1] == kEmbeddedNotify;
}

std::array<std::uint32_t, 18> leastSizeHints(PixelSize size)
{
    constexpr std::uint32_t kLeastSizeGiven = 1 << 4;
    std::array<std::uint32_t, 18> hints{};
    hints[0] = kLeastSizeGiven;
    hints[5] = static_cast<std::uint32_t>(size.width);
    hints[6] = static_cast<std::uint32_t>(size.height);
    return hints;
}

} // namespace amperly
