// The popover below the item in the menu bar: the system's own, with a widget of the toolkit in
// it. It closes by itself when the user clicks elsewhere.
#pragma once

#include "platform/macos/shell/closing_click.h"
#include "platform/macos/shell/popover_opening.h"
#include "platform/popover_host.h"

#import <AppKit/AppKit.h>

#include <QObject>

#include <vector>

namespace amperly {

/// What a popover host is made of.
struct NativePopoverParts {
    /// The view below which the popover opens; nil where there is none.
    std::function<NSView*()> anchor;

    ViewOf viewOf = nativeView;

    /// Seconds since the system started.
    std::function<double()> clock = systemUptime;

    [[nodiscard]] static double systemUptime();
};

class NativePopoverHost : public PopoverHost {
public:
    explicit NativePopoverHost(NativePopoverParts parts);
    ~NativePopoverHost() override;
    NativePopoverHost(const NativePopoverHost&) = delete;
    NativePopoverHost& operator=(const NativePopoverHost&) = delete;

    [[nodiscard]] bool takesClick() override;

    /// The popover opens below the item, whatever the anchor. Does nothing but drop the content
    /// when there is no item.
    void show(std::unique_ptr<QWidget> content, std::optional<ScreenPoint> anchor) override;

    /// The content may ask for this itself: it is destroyed once the event loop runs.
    void close() override;
    [[nodiscard]] bool isShown() const override;
    void onDidClose(std::function<void()> handler) override { m_didClose = std::move(handler); }

private:
    void open(std::unique_ptr<QWidget> content, NSView* anchor);
    void popoverWillClose();
    void popoverDidClose(PopoverOpening& opening);
    void announceClosing();

    NativePopoverParts m_parts;
    std::function<void()> m_didClose;
    ClosingClick m_closingClick;
    bool m_isClosingOnRequest = false;
    std::vector<std::unique_ptr<PopoverOpening>> m_openings; ///< the latest last; those before are closing
    QObject m_context;
};

} // namespace amperly
