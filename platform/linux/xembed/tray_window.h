// The window that a tray takes in. It is drawn in the visual that the tray offers: with an alpha
// channel the panel shines through by itself, without one the panel's own pixels are read back
// once for each exposure and the ink is mixed into them here.
#pragma once

#include "platform/coverage_mask.h"
#include "platform/linux/xembed/tray_protocol.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>
#include <xcb/xcb.h>

namespace amperly {

/// The X server as the item uses it: somebody else's connection, one of its screens.
struct X11Screen {
    xcb_connection_t* connection = nullptr;
    const xcb_screen_t* screen = nullptr;
    TrayAtoms atoms{};
};

class TrayWindow {
public:
    /// Makes the window, unseen as yet, and asks `tray` to take it in. `x11` must outlive it.
    TrayWindow(const X11Screen& x11, const FoundTray& tray, PixelSize wished);

    ~TrayWindow();

    TrayWindow(const TrayWindow&) = delete;
    TrayWindow& operator=(const TrayWindow&) = delete;

    [[nodiscard]] xcb_window_t id() const { return m_window; }

    /// What the window measures now, as far as the server has told.
    [[nodiscard]] PixelSize size() const { return m_size; }
    [[nodiscard]] bool hasAlpha() const { return m_depth == kAlphaDepth; }

    /// The server says that the window measures `size`. False if it did before.
    bool resized(PixelSize size);

    /// The server says that the window has to be drawn: what shines through may be new as well.
    void exposed();

    /// Asks the tray for another size.
    void wish(PixelSize size);

    /// What assistive tools read. Held back until the tray has taken the window in, see embedded().
    void setName(std::string_view name);

    /// The tray has taken the window in. Trays remember by its name where an item belongs, and
    /// take the name at that moment, so up to here it is one that never changes.
    void embedded();

    /// Draws, once the window has been exposed.
    void paint(const CoverageMask& mask, Ink ink);

private:
    static constexpr std::uint8_t kAlphaDepth = 32;

    [[nodiscard]] bool offersAlpha(xcb_visualid_t visual) const;
    void createWindow(xcb_visualid_t visual);
    void writeName(std::string_view name);
    [[nodiscard]] bool readBackground();

    const X11Screen& m_x11;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    xcb_gcontext_t m_context = XCB_NONE;
    xcb_colormap_t m_colormap = XCB_NONE; ///< none: the screen's
    std::uint8_t m_depth = 0;
    PixelSize m_size;
    PixelSize m_wished;
    std::string m_name;
    bool m_embedded = false;
    bool m_exposed = false;
    std::vector<std::uint32_t> m_background; ///< empty: to be read
    std::vector<std::uint32_t> m_pixels; ///< kept for its memory
};

// What the X server is sent for `mask` in `ink`: rows of 32-bit pixels 0xAARRGGBB for the whole window, the
// mask in its middle. What sticks out is cut off.

/// For a window with an alpha channel: premultiplied, transparent where there is no ink.
void premultipliedPixels(
    const CoverageMask& mask, Ink ink, PixelSize window, std::vector<std::uint32_t>& pixels);

/// For a window without one: the ink over `background`, which has the window's size. The highest
/// byte means nothing there.
void pixelsOver(std::span<const std::uint32_t> background, const CoverageMask& mask, Ink ink,
    PixelSize window, std::vector<std::uint32_t>& pixels);

} // namespace amperly
