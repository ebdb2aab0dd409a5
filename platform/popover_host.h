// A transient panel beside the status item: it closes when the user clicks elsewhere or
// presses Esc, and tells when it did.
#pragma once

#include "platform/status_item.h"

#include <functional>
#include <memory>
#include <optional>

class QWidget;

namespace amperly {

class PopoverHost {
public:
    virtual ~PopoverHost() = default;

    /// Whether a click on the status item asks for the popover. It does not when it is the rest of
    /// the click that has just closed the popover, nor where there is nothing to show it beside. To
    /// be asked for each click once, while the popover is closed.
    [[nodiscard]] virtual bool takesClick() = 0;

    /// Shows `content`, owned by the host until the popover has closed, beside `anchor` or,
    /// without one, where the pointer is, with the keyboard's focus. Closes what was shown.
    virtual void show(std::unique_ptr<QWidget> content, std::optional<ScreenPoint> anchor) = 0;

    /// Closes the popover; nothing happens when none is shown.
    virtual void close() = 0;

    [[nodiscard]] virtual bool isShown() const = 0;

    /// Called after the popover has closed for whatever reason, its content already gone.
    virtual void onDidClose(std::function<void()> handler) = 0;
};

} // namespace amperly
