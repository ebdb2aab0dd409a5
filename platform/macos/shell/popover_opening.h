// One opening of the popover, from its first frame to the end of its closing animation: a popover
// of its own, and a widget of the toolkit's in it. The next opening does not wait for this one.
#pragma once

#include "platform/macos/shell/native_view.h"

#import <AppKit/AppKit.h>

#include <QWidget>

#include <functional>
#include <memory>

@class AMPPopoverDelegate;

namespace amperly {

class PopoverOpening {
public:
    /// What happens to the popover. The opening may not be destroyed from within.
    struct Handlers {
        std::function<void()> willClose;
        std::function<void()> didClose;
        std::function<void()> escape; ///< the Esc key was pressed
    };

    /// Opens below `anchor`, with the keyboard's focus.
    PopoverOpening(std::unique_ptr<QWidget> content, const ViewOf& viewOf, NSView* anchor, Handlers handlers);

    /// Takes the popover off the screen at once, and the content with it. No handler is called.
    ~PopoverOpening();
    PopoverOpening(const PopoverOpening&) = delete;
    PopoverOpening& operator=(const PopoverOpening&) = delete;

    [[nodiscard]] bool isShown() const { return m_popover.shown == YES; }
    void close() { [m_popover close]; }

    /// After the closing: hides the content, which is destroyed once the event loop runs.
    QWidget* retireContent();

private:
    class ContentWatch;

    void fitToContent();

    NSPopover* m_popover;
    AMPPopoverDelegate* m_delegate;
    QWidget* m_content; ///< null once it has been destroyed
    std::unique_ptr<ContentWatch> m_watch;
};

} // namespace amperly
