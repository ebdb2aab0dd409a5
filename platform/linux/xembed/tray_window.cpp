#include "platform/linux/xembed/tray_window.h"

#include "platform/linux/x11/x11_connection.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace amperly {

namespace {

constexpr std::string_view kLastingName = "Amperly";

/// WM_CLASS: instance and class, each with its end.
constexpr std::string_view kClass{"amperly\0Amperly\0", 16};

/// No tray gives so much to one item, and a request must not outgrow what the server takes.
constexpr int kMostPixels = 1 << 20;

/// a × b of 255, rounded.
constexpr std::uint32_t share(std::uint32_t a, std::uint32_t b)
{
    return (a * b + 127) / 255;
}

constexpr std::uint32_t channel(std::uint32_t pixel, unsigned shift)
{
    return (pixel >> shift) & 0xff;
}

/// Calls put(pixel, alpha) for each pixel that the centred mask has ink on.
void forEachInked(const CoverageMask& mask, Ink ink, PixelSize window, auto put)
{
    // Rounded down on both sides of zero: a mask one pixel too large loses its last row or column
    // before its first, as one that is a pixel too small leaves it free.
    const auto half = [](int difference) { return difference >> 1; };
    const int left = half(window.width - mask.width);
    const int top = half(window.height - mask.height);
    const int firstX = std::max(0, left);
    const int lastX = std::min(window.width, left + mask.width);
    const int lastY = std::min(window.height, top + mask.height);
    for (int y = std::max(0, top); y < lastY; ++y) {
        for (int x = firstX; x < lastX; ++x) {
            const std::uint32_t alpha = share(mask.at(x - left, y - top), ink.argb >> 24);
            if (alpha != 0) {
                put(static_cast<std::size_t>(y) * static_cast<std::size_t>(window.width)
                        + static_cast<std::size_t>(x),
                    alpha);
            }
        }
    }
}

} // namespace

TrayWindow::TrayWindow(const X11Screen& x11, const FoundTray& tray, PixelSize wished)
    : m_x11(x11), m_size(wished)
{
    createWindow(tray.visual);
    xcb_connection_t* connection = m_x11.connection;
    const TrayAtoms& atoms = m_x11.atoms;
    wish(wished);
    writeName(kLastingName);
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
        kClass.size(), kClass.data());
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, m_window, atoms.xembedInfo, atoms.xembedInfo, 32,
        kXEmbedInfo.size(), kXEmbedInfo.data());

    const xcb_client_message_event_t request = dockRequest(tray.owner, m_window, atoms);
    ignoreOutcome(connection,
        xcb_send_event_checked(
            connection, 0, tray.owner, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&request)));
    xcb_flush(connection);
}

TrayWindow::~TrayWindow()
{
    xcb_connection_t* connection = m_x11.connection;
    xcb_free_gc(connection, m_context);
    // A tray that ends may have taken the window with it.
    ignoreOutcome(connection, xcb_destroy_window_checked(connection, m_window));
    if (m_colormap != XCB_NONE)
        xcb_free_colormap(connection, m_colormap);
    xcb_flush(connection);
}

bool TrayWindow::offersAlpha(xcb_visualid_t visual) const
{
    for (auto depth = xcb_screen_allowed_depths_iterator(m_x11.screen); depth.rem > 0;
         xcb_depth_next(&depth)) {
        if (depth.data->depth != kAlphaDepth)
            continue;
        for (auto type = xcb_depth_visuals_iterator(depth.data); type.rem > 0; xcb_visualtype_next(&type)) {
            if (type.data->visual_id == visual)
                return type.data->red_mask == 0xff0000 && type.data->blue_mask == 0xff;
        }
    }
    return false;
}

void TrayWindow::createWindow(xcb_visualid_t visual)
{
    xcb_connection_t* connection = m_x11.connection;
    const xcb_screen_t& screen = *m_x11.screen;
    const std::uint32_t events = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY
        | XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_ENTER_WINDOW
        | XCB_EVENT_MASK_LEAVE_WINDOW;
    m_window = xcb_generate_id(connection);
    const auto create = [&](xcb_visualid_t drawnIn, std::uint32_t mask, const std::uint32_t* values) {
        xcb_create_window(connection, m_depth, m_window, screen.root, 0, 0,
            static_cast<std::uint16_t>(m_size.width), static_cast<std::uint16_t>(m_size.height), 0,
            XCB_WINDOW_CLASS_INPUT_OUTPUT, drawnIn, mask, values);
    };
    if (offersAlpha(visual)) {
        m_depth = kAlphaDepth;
        m_colormap = xcb_generate_id(connection);
        xcb_create_colormap(connection, XCB_COLORMAP_ALLOC_NONE, m_colormap, screen.root, visual);
        // Without a border of its own, a window deeper than its parent is refused.
        const std::array<std::uint32_t, 4> values{0, 0, events, m_colormap};
        create(visual, XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
            values.data());
    } else {
        m_depth = screen.root_depth;
        const std::array<std::uint32_t, 2> values{XCB_BACK_PIXMAP_PARENT_RELATIVE, events};
        create(screen.root_visual, XCB_CW_BACK_PIXMAP | XCB_CW_EVENT_MASK, values.data());
    }
    m_context = xcb_generate_id(connection);
    xcb_create_gc(connection, m_context, m_window, 0, nullptr);
}

bool TrayWindow::resized(PixelSize size)
{
    if (m_size == size)
        return false;
    m_size = size;
    m_background.clear();
    return true;
}

void TrayWindow::exposed()
{
    m_exposed = true;
    m_background.clear();
}

void TrayWindow::wish(PixelSize size)
{
    if (m_wished == size)
        return;
    m_wished = size;
    const auto hints = leastSizeHints(size);
    ignoreOutcome(m_x11.connection,
        xcb_change_property_checked(m_x11.connection, XCB_PROP_MODE_REPLACE, m_window,
            XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, 32, hints.size(), hints.data()));
    xcb_flush(m_x11.connection);
}

void TrayWindow::setName(std::string_view name)
{
    if (m_name == name)
        return;
    m_name = name;
    if (m_embedded)
        writeName(m_name);
}

void TrayWindow::embedded()
{
    if (m_embedded)
        return;
    m_embedded = true;
    if (!m_name.empty())
        writeName(m_name);
}

void TrayWindow::writeName(std::string_view name)
{
    for (const xcb_atom_t property : {m_x11.atoms.windowName, xcb_atom_t{XCB_ATOM_WM_NAME}}) {
        ignoreOutcome(m_x11.connection,
            xcb_change_property_checked(m_x11.connection, XCB_PROP_MODE_REPLACE, m_window, property,
                m_x11.atoms.utf8, 8, static_cast<std::uint32_t>(name.size()), name.data()));
    }
    xcb_flush(m_x11.connection);
}

bool TrayWindow::readBackground()
{
    xcb_connection_t* connection = m_x11.connection;
    const auto width = static_cast<std::uint16_t>(m_size.width);
    const auto height = static_cast<std::uint16_t>(m_size.height);
    ignoreOutcome(connection, xcb_clear_area_checked(connection, 0, m_window, 0, 0, width, height));
    const X11Reply<xcb_get_image_reply_t> image(xcb_get_image_reply(connection,
        xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_window, 0, 0, width, height, ~0U), nullptr));
    const std::size_t pixels = std::size_t{width} * height;
    // Refused while the window is covered or off the screen; there will be an exposure.
    if (!image
        || static_cast<std::size_t>(xcb_get_image_data_length(image.get())) != pixels * sizeof(std::uint32_t))
        return false;
    m_background.resize(pixels);
    std::memcpy(m_background.data(), xcb_get_image_data(image.get()), pixels * sizeof(std::uint32_t));
    return true;
}

void TrayWindow::paint(const CoverageMask& mask, Ink ink)
{
    if (!m_exposed || m_size.width * m_size.height > kMostPixels)
        return;
    if (hasAlpha()) {
        premultipliedPixels(mask, ink, m_size, m_pixels);
    } else {
        if (m_background.empty() && !readBackground())
            return;
        pixelsOver(m_background, mask, ink, m_size, m_pixels);
    }
    ignoreOutcome(m_x11.connection,
        xcb_put_image_checked(m_x11.connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_window, m_context,
            static_cast<std::uint16_t>(m_size.width), static_cast<std::uint16_t>(m_size.height), 0, 0, 0,
            m_depth, static_cast<std::uint32_t>(m_pixels.size() * sizeof(std::uint32_t)),
            reinterpret_cast<const std::uint8_t*>(m_pixels.data())));
    xcb_flush(m_x11.connection);
}

void premultipliedPixels(
    const CoverageMask& mask, Ink ink, PixelSize window, std::vector<std::uint32_t>& pixels)
{
    pixels.assign(static_cast<std::size_t>(window.width) * static_cast<std::size_t>(window.height), 0);
    forEachInked(mask, ink, window, [&](std::size_t index, std::uint32_t alpha) {
        std::uint32_t pixel = alpha << 24;
        for (const unsigned shift : {16U, 8U, 0U})
            pixel |= share(channel(ink.argb, shift), alpha) << shift;
        pixels[index] = pixel;
    });
}

void pixelsOver(std::span<const std::uint32_t> background, const CoverageMask& mask, Ink ink,
    PixelSize window, std::vector<std::uint32_t>& pixels)
{
    pixels.assign(background.begin(), background.end());
    forEachInked(mask, ink, window, [&](std::size_t index, std::uint32_t alpha) {
        std::uint32_t pixel = 0xff000000;
        for (const unsigned shift : {16U, 8U, 0U}) {
            const std::uint32_t mixed
                = channel(ink.argb, shift) * alpha + channel(background[index], shift) * (255 - alpha);
            pixel |= ((mixed + 127) / 255) << shift;
        }
        pixels[index] = pixel;
    });
}

} // namespace amperly
