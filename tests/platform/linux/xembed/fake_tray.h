// The smallest tray there can be: owns the selection, takes windows in, gives them a size.
#pragma once

#include "platform/linux/xembed/item_layout.h"

#include <QTimer>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>
#include <xcb/xcb.h>

namespace amperly::test {

/// What a tray is like.
struct TrayManners {
    bool offersAlpha = false;
    bool vertical = false;
    bool forcesSquare = false; ///< makes every icon a square of its own size
    int iconHeight = 22;
    std::uint32_t background = 0x00203040;
};

class FakeTray {
public:
    /// Takes the selection over on `display` and announces itself.
    FakeTray(const std::string& display, TrayManners manners);

    /// Ends as a panel does that was killed: the server cleans up.
    ~FakeTray();

    FakeTray(const FakeTray&) = delete;
    FakeTray& operator=(const FakeTray&) = delete;

    [[nodiscard]] int docked() const { return m_docked; } ///< requests so far
    [[nodiscard]] xcb_window_t icon() const { return m_icon; }
    [[nodiscard]] PixelSize iconSize();
    [[nodiscard]] PixelSize leastSize(); ///< that the icon asks for
    [[nodiscard]] std::string iconName();
    [[nodiscard]] const std::string& nameAtDocking() const { return m_nameAtDocking; }
    [[nodiscard]] bool iconExists();

    /// The pixel in the middle of the icon, as it can be seen.
    [[nodiscard]] std::uint32_t middlePixel();
    [[nodiscard]] std::uint32_t cornerPixel();

    void resizeIcons(int height);
    void resizeIconTo(PixelSize size);
    void setOrientation(bool vertical);
    void stateColors();
    void putOut(); ///< the icon, back onto the root
    void click(std::uint8_t button, int x, int y);
    void press(std::uint8_t button);
    void movePointerOntoIcon();
    void movePointerAway();

private:
    struct Closed {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    [[nodiscard]] xcb_atom_t atom(const std::string& name);
    [[nodiscard]] std::uint32_t pixel(int x, int y);
    [[nodiscard]] std::string readName(xcb_window_t window);
    void sendButton(std::uint8_t type, std::uint8_t button, int x, int y);
    void announce();
    void handleEvents();
    void takeIn(xcb_window_t icon);
    void fitIcon();

    std::unique_ptr<xcb_connection_t, Closed> m_connection;
    xcb_screen_t* m_screen = nullptr;
    TrayManners m_manners;
    xcb_window_t m_owner = XCB_WINDOW_NONE;
    xcb_window_t m_panel = XCB_WINDOW_NONE;
    xcb_window_t m_icon = XCB_WINDOW_NONE;
    int m_docked = 0;
    std::string m_nameAtDocking;
    xcb_atom_t m_opcode = XCB_ATOM_NONE;
    QTimer m_turn;
};

} // namespace amperly::test
