// What is known about the panels that show status items: how each one draws an item, and which
// of the protocol's promises it does not keep.
#pragma once

#include "platform/linux/files/xdg_session.h"
#include "platform/linux/tray/item_encoding.h"

#include <string_view>

namespace amperly {

/// How the item is drawn for a host.
enum class ItemDrawing {
    Wide, ///< one item, its picture as wide as it is
    Tiles, ///< a square item for each reading, because a wide picture is squeezed to a strip
    Labelled, ///< one item, a glyph with the readings as a text beside it
};

/// Where the ink comes from when the tray does not state a colour of its own.
enum class PanelInk {
    White, ///< the panel is dark whatever the applications are
    Palette, ///< the panel is drawn in the toolkit's colours
    ColorScheme, ///< the panel goes with the desktop's light or dark scheme
};

/// How tool tips are read.
enum class ToolTipText {
    None, ///< not at all
    Plain, ///< as they are
    Markup, ///< as markup
    PlainThenMarkup, ///< the title as it is, the text below it as markup
};

struct HostProfile {
    ItemDrawing drawing = ItemDrawing::Wide;
    PanelInk ink = PanelInk::ColorScheme;
    ToolTipText toolTip = ToolTipText::Markup;

    PixmapAlpha pixmapAlpha = PixmapAlpha::Straight;

    /// The item that registered last stands first.
    bool lastRegisteredFirst = false;

    /// Items of one connection are told apart by their paths. Elsewhere each needs a connection of
    /// its own.
    bool takesSeveralOfAConnection = false;

    /// Items stand in the order of their titles, those of the same title in any order.
    bool sortsByTitle = false;

    /// The host scales its largest pixmap down, however well a smaller one would fit.
    bool takesLargestPixmap = false;

    /// Whatever an item tells, the host asks for everything, so that telling once is enough.
    bool asksForEverything = false;

    /// Clicks come with coordinates of the screen. Other hosts count from the item's corner or
    /// make them up.
    bool globalCoordinates = false;

    /// A left click opens the menu without telling.
    bool leftClickOpensMenu = false;

    friend bool operator==(const HostProfile&, const HostProfile&) = default;
};

/// The profile of the host whose process is called `process` (as /proc/PID/comm has it, cut at 15
/// characters; empty if unknown), on `desktop`, which counts where the process says nothing.
[[nodiscard]] HostProfile hostProfile(std::string_view process, const CurrentDesktop& desktop);

} // namespace amperly
