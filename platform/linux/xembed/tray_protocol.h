// The protocol of the system tray on X11: who owns a screen's tray selection shows icons, a client asks it
// to take a window in, and a client message on the root announces each new owner.
#pragma once

#include "platform/linux/xembed/item_layout.h"

#include <array>
#include <cstdint>
#include <optional>
#include <xcb/xcb.h>

namespace amperly {

struct TrayAtoms {
    xcb_atom_t selection = XCB_ATOM_NONE; ///< of the tray on this screen
    xcb_atom_t manager = XCB_ATOM_NONE;
    xcb_atom_t opcode = XCB_ATOM_NONE;
    xcb_atom_t visual = XCB_ATOM_NONE;
    xcb_atom_t orientation = XCB_ATOM_NONE;
    xcb_atom_t xembed = XCB_ATOM_NONE;
    xcb_atom_t xembedInfo = XCB_ATOM_NONE;
    xcb_atom_t windowName = XCB_ATOM_NONE;
    xcb_atom_t utf8 = XCB_ATOM_NONE;
};

/// One round trip. `screen` counts from 0.
[[nodiscard]] TrayAtoms internTrayAtoms(xcb_connection_t* connection, int screen);

/// A tray that was found.
struct FoundTray {
    xcb_window_t owner = XCB_WINDOW_NONE;
    xcb_visualid_t visual = XCB_NONE; ///< what icons should be drawn in; XCB_NONE: the screen's
    TrayOrientation orientation = TrayOrientation::Horizontal;
};

/// The tray there is, if any, with its end and its properties reported from now on.
[[nodiscard]] std::optional<FoundTray> findTray(xcb_connection_t* connection, const TrayAtoms& atoms);

/// Which way the tray of `owner` grows. Panels are moved to another edge while they run.
[[nodiscard]] TrayOrientation readOrientation(
    xcb_connection_t* connection, xcb_window_t owner, const TrayAtoms& atoms);

/// The owner that a client message announces for the tray, if it does so.
[[nodiscard]] std::optional<xcb_window_t> announcedTray(
    const xcb_client_message_event_t& message, const TrayAtoms& atoms);

/// Asks `tray` to take `icon` in.
[[nodiscard]] xcb_client_message_event_t dockRequest(
    xcb_window_t tray, xcb_window_t icon, const TrayAtoms& atoms);

/// Whether a client message tells its window that it has been taken in.
[[nodiscard]] bool isEmbeddedNotice(const xcb_client_message_event_t& message, const TrayAtoms& atoms);

/// WM_NORMAL_HINTS with a least size and nothing else. Trays read no other.
[[nodiscard]] std::array<std::uint32_t, 18> leastSizeHints(PixelSize size);

/// _XEMBED_INFO: version 0, to be mapped.
inline constexpr std::array<std::uint32_t, 2> kXEmbedInfo{0, 1};

} // namespace amperly
