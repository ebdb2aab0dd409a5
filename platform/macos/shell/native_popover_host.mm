#include "platform/macos/shell/native_popover_host.h"

#include <utility>

namespace amperly {
namespace {

/// Whether the left mouse button is down with the pointer on the window of `view`, which for the
/// item is its place in the menu bar. Clicks with the other one are for the menu.
bool isPressed(NSView* view)
{
    constexpr NSUInteger kLeftButton = 1;
    if (view == nil || view.window == nil || (NSEvent.pressedMouseButtons & kLeftButton) == 0)
        return false;
    return NSPointInRect(NSEvent.mouseLocation, view.window.frame);
}

} // namespace

double NativePopoverParts::systemUptime()
{
    return NSProcessInfo.processInfo.systemUptime;
}

NativePopoverHost::NativePopoverHost(NativePopoverParts parts) : m_parts(std::move(parts)) { }

NativePopoverHost::~NativePopoverHost()
{
    m_didClose = nullptr;
    // The openings take their content along, and are not to be looked for meanwhile.
    const auto openings = std::exchange(m_openings, {});
}

bool NativePopoverHost::isShown() const
{
    return !m_openings.empty() && m_openings.back()->isShown();
}

bool NativePopoverHost::takesClick()
{
    return !m_closingClick.isRestOfIt(m_parts.clock()) && m_parts.anchor() != nil;
}

void NativePopoverHost::show(std::unique_ptr<QWidget> content, std::optional<ScreenPoint>)
{
    close();
    if (NSView* const anchor = m_parts.anchor())
        open(std::move(content), anchor);
}

void NativePopoverHost::open(std::unique_ptr<QWidget> content, NSView* anchor)
{
    // What a handler that is called this early would be about has not been made yet.
    const auto place = std::make_shared<PopoverOpening*>(nullptr);
    auto opening = std::make_unique<PopoverOpening>(std::move(content), m_parts.viewOf, anchor,
        PopoverOpening::Handlers{
            .willClose = [this] { popoverWillClose(); },
            .didClose =
                [this, place] {
                    if (*place != nullptr)
                        popoverDidClose(**place);
                },
            .escape = [this] { close(); },
        });
    *place = opening.get();
    m_openings.push_back(std::move(opening));
}

void NativePopoverHost::close()
{
    if (!isShown())
        return;
    m_isClosingOnRequest = true;
    m_openings.back()->close();
    m_isClosingOnRequest = false;
}

void NativePopoverHost::popoverWillClose()
{
    if (!m_isClosingOnRequest && isPressed(m_parts.anchor()))
        m_closingClick.closedByPress(m_parts.clock());
}

void NativePopoverHost::popoverDidClose(PopoverOpening& opening)
{
    QObject::connect(opening.retireContent(), &QObject::destroyed, &m_context, [this, gone = &opening] {
        std::erase_if(m_openings, [gone](const auto& each) { return each.get() == gone; });
        announceClosing();
    });
}

void NativePopoverHost::announceClosing()
{
    if (m_didClose)
        m_didClose();
}

} // namespace amperly
