// The colours that a tray on X11 wants symbolic icons in: a property of the window that owns the
// tray's selection, four colours of three 16-bit channels each, the plain one first.
#pragma once

#include "platform/coverage_mask.h"

#include <QAbstractNativeEventFilter>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <xcb/xcb.h>

namespace amperly {

/// The plain colour of a _NET_SYSTEM_TRAY_COLORS property; nothing if it is too short for one.
[[nodiscard]] std::optional<Ink> decodeTrayColors(std::span<const std::uint32_t> channels);

class X11TrayColors : public QAbstractNativeEventFilter {
public:
    /// Follows the tray of the default screen over the toolkit's connection; null where the toolkit is not on
    /// X11.
    [[nodiscard]] static std::unique_ptr<X11TrayColors> create();

    ~X11TrayColors() override;

    /// What the tray asks for; nothing without a tray or a tray without a preference.
    [[nodiscard]] std::optional<Ink> ink() const { return m_ink; }

    void onChanged(std::function<void()> handler) { m_changed = std::move(handler); }

    /// Finds the tray anew and reads its colours.
    void refresh();

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
    explicit X11TrayColors(xcb_connection_t* connection);

    xcb_connection_t* m_connection;
    xcb_atom_t m_selection = XCB_ATOM_NONE;
    xcb_atom_t m_colors = XCB_ATOM_NONE;
    xcb_atom_t m_manager = XCB_ATOM_NONE;
    xcb_window_t m_tray = XCB_WINDOW_NONE;
    std::optional<Ink> m_ink;
    std::function<void()> m_changed;
};

} // namespace amperly
