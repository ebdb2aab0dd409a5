// What shows the item while nobody on the bus does: the tray that X11 had before. It is shown when
// there is no watcher on the bus and hidden as soon as one appears.
#pragma once

#include "platform/status_item.h"
#include "platform/status_picture.h"

#include <functional>
#include <optional>
#include <string_view>

namespace amperly {

class TrayFallback {
public:
    virtual ~TrayFallback() = default;

    /// Shows the picture, and the item where it is not shown yet. The picture is only used during
    /// the call. Called for changes only.
    virtual void show(
        const StatusPicture& picture, std::optional<std::string_view> toolTip, std::string_view spokenLabel)
        = 0;

    /// The colour to draw in has changed; the picture has not.
    virtual void inkChanged() = 0;

    /// Takes the item away. Nothing happens when it is not shown.
    virtual void hide() = 0;

    virtual void onClick(StatusItem::ClickHandler handler) = 0;

    /// Called when the picture is needed once more, because the tray has another size or has only
    /// now appeared; a call of show() is the answer.
    virtual void onPictureWanted(std::function<void()> handler) = 0;
};

} // namespace amperly
