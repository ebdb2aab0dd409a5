#include "platform/linux/tray/host_profile.h"

#include <array>

namespace amperly {

namespace {

constexpr HostProfile kUnknown{};

constexpr HostProfile kWaybar{
    .ink = PanelInk::White, // dark in its own style sheet, which few change for a light desktop
    .takesLargestPixmap = true,
    .asksForEverything = true,
};

constexpr HostProfile kMate{};

constexpr HostProfile kXfce{
    .drawing = ItemDrawing::Tiles,
    .toolTip = ToolTipText::PlainThenMarkup,
    .lastRegisteredFirst = true,
    .takesSeveralOfAConnection = true,
    .takesLargestPixmap = true,
    .asksForEverything = true,
    .globalCoordinates = true,
};

constexpr HostProfile kLxqt{
    .drawing = ItemDrawing::Tiles,
    .ink = PanelInk::Palette,
    .toolTip = ToolTipText::Plain,
    .globalCoordinates = true,
};

constexpr HostProfile kPlasma{
    .drawing = ItemDrawing::Tiles,
    .ink = PanelInk::Palette,
    .sortsByTitle = true,
    .globalCoordinates = true,
};

constexpr HostProfile kCinnamon{.drawing = ItemDrawing::Tiles};

constexpr HostProfile kSwaybar{
    .drawing = ItemDrawing::Tiles,
    .ink = PanelInk::White, // black unless its configuration says otherwise
    .toolTip = ToolTipText::None,
    .pixmapAlpha = PixmapAlpha::Premultiplied,
    .lastRegisteredFirst = true,
    .globalCoordinates = true,
};

constexpr HostProfile kGnome{
    .drawing = ItemDrawing::Labelled,
    .ink = PanelInk::White, // the top bar is black in either scheme
    .toolTip = ToolTipText::None,
    .lastRegisteredFirst = true,
    .leftClickOpensMenu = true,
};

struct Row {
    std::string_view name;
    HostProfile profile;
};

/// By the start of the process's name.
constexpr std::array kByProcess{
    Row{"waybar", kWaybar},
    Row{"mate-panel", kMate},
    Row{"notification-ar", kMate}, // the notification area where it runs out of process
    Row{"panel-", kXfce}, // panel-N-systray: each panel plugin is a process of its own
    Row{"xfce4-panel", kXfce},
    Row{"lxqt-panel", kLxqt},
    Row{"kded", kPlasma},
    Row{"plasmashell", kPlasma},
    Row{"xapp-sn-watcher", kCinnamon},
    Row{"cinnamon", kCinnamon},
    Row{"swaybar", kSwaybar},
    Row{"gnome-shell", kGnome},
};

/// By one name of the desktop's list. Compositors without a panel of their own are missing:
/// their name says nothing about the bar.
constexpr std::array kByDesktop{
    Row{"MATE", kMate},
    Row{"XFCE", kXfce},
    Row{"LXQt", kLxqt},
    Row{"KDE", kPlasma},
    Row{"X-Cinnamon", kCinnamon},
    Row{"GNOME", kGnome},
};

} // namespace

HostProfile hostProfile(std::string_view process, const CurrentDesktop& desktop)
{
    for (const Row& row : kByProcess) {
        if (process.starts_with(row.name))
            return row.profile;
    }
    for (const std::string& name : desktop.names()) {
        for (const Row& row : kByDesktop) {
            if (name == row.name)
                return row.profile;
        }
    }
    return kUnknown;
}

} // namespace amperly
