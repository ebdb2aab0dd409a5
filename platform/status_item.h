// The program's one item in the desktop's status area.
#pragma once

#include "platform/menu.h"
#include "platform/status_picture.h"

#include <functional>
#include <optional>
#include <string_view>

namespace amperly {

/// A place on the screen, in the desktop's global logical coordinates.
struct ScreenPoint {
    int x = 0;
    int y = 0;
    friend bool operator==(const ScreenPoint&, const ScreenPoint&) = default;
};

enum class ClickButton { Left, Right };

/// One click on the item.
struct StatusClick {
    ClickButton button = ClickButton::Left;
    std::optional<ScreenPoint> anchor; ///< where something should open; nothing if the desktop did not say
};

class StatusItem {
public:
    using ClickHandler = std::function<void(const StatusClick&)>;

    virtual ~StatusItem() = default;

    /// Shows a picture with its texts (UTF-8). `toolTip` absent means no tooltip. The picture is
    /// only used during the call. Showing what is shown already costs nothing on the desktop.
    virtual void show(
        const StatusPicture& picture, std::optional<std::string_view> toolTip, std::string_view spokenLabel)
        = 0;

    /// Called when another panel took over, or the panel asks for another size, so that the
    /// picture has to be drawn anew; the handler calls show(). Without a handler the next show()
    /// does. Desktops that ask for the picture themselves never call it.
    virtual void onPictureWanted(std::function<void()> handler) = 0;

    /// Called for every click that the desktop hands on.
    virtual void onClick(ClickHandler handler) = 0;

    /// The menu that the desktop may open by itself (a right click on most). It must outlive
    /// the item. The menu's willOpen() and didClose() are called around each opening.
    virtual void setMenu(Menu& menu) = 0;

    /// Opens the menu now, at `anchor` or, without one, where the pointer is.
    virtual void openMenu(std::optional<ScreenPoint> anchor) = 0;
};

} // namespace amperly
