#include "platform/macos/shell/native_popover_host.h"

#include <QKeyEvent>
#include <QWidget>

#include <utility>

@interface AMPPopoverDelegate : NSObject <NSPopoverDelegate> {
@public
    std::function<void()> _willClose;
    std::function<void()> _didClose;
}
@end

@implementation AMPPopoverDelegate

- (void)popoverWillClose:(NSNotification*)notification
{
    if (_willClose)
        _willClose();
}

- (void)popoverDidClose:(NSNotification*)notification
{
    if (_didClose)
        _didClose();
}

@end

namespace amperly {

double NativePopoverParts::systemUptime()
{
    return NSProcessInfo.processInfo.systemUptime;
}

/// Looks at what happens to the widget in the popover: a size of its own, and the Esc key.
class NativePopoverHost::ContentWatch : public QObject {
public:
    ContentWatch(QWidget& content, NativePopoverHost& host) : m_host(host)
    {
        content.installEventFilter(this);
    }

    bool eventFilter(QObject* content, QEvent* event) override
    {
        if (event->type() == QEvent::Resize)
            m_host.fitToContent();
        if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
            m_host.close();
            return true;
        }
        return QObject::eventFilter(content, event);
    }

private:
    NativePopoverHost& m_host;
};

NativePopoverHost::NativePopoverHost(NativePopoverParts parts)
    : m_parts(std::move(parts)), m_popover([NSPopover new]), m_delegate([AMPPopoverDelegate new])
{
    m_delegate->_willClose = [this] { popoverWillClose(); };
    m_delegate->_didClose = [this] { popoverDidClose(); };
    m_popover.behavior = NSPopoverBehaviorTransient;
    m_popover.animates = YES;
    m_popover.delegate = m_delegate;
}

NativePopoverHost::~NativePopoverHost()
{
    m_popover.delegate = nil;
    m_delegate->_willClose = nullptr;
    m_delegate->_didClose = nullptr;
    [m_popover close];
    m_popover.contentViewController = nil;
    for (const QPointer<QWidget>& content : m_leaving)
        delete content;
}

bool NativePopoverHost::isShown() const
{
    return m_popover.shown == YES;
}

bool NativePopoverHost::takesClick()
{
    return !m_closingClick.isRestOfIt(m_parts.clock()) && m_parts.anchor() != nil;
}

void NativePopoverHost::show(std::unique_ptr<QWidget> content, std::optional<ScreenPoint>)
{
    close();
    NSView* const anchor = m_parts.anchor();
    if (anchor == nil)
        return;

    content->adjustSize();
    NSView* const view = m_parts.viewOf(*content);
    const NSSize size = NSMakeSize(content->width(), content->height());
    NSViewController* const controller = [[NSViewController alloc] initWithNibName:nil bundle:nil];
    controller.view = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, size.width, size.height)];
    view.frame = controller.view.bounds;
    view.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
    [controller.view addSubview:view];
    m_popover.contentViewController = controller;
    m_popover.contentSize = size;

    // What a closing that is still on its way has left behind goes now.
    if (m_content)
        retireContent();
    m_content = std::move(content);
    m_watch = std::make_unique<ContentWatch>(*m_content, *this);
    m_content->show();

    [m_popover showRelativeToRect:anchor.bounds ofView:anchor preferredEdge:NSRectEdgeMinY];
    [controller.view.window makeKeyWindow];
    [controller.view.window makeFirstResponder:view];
}

void NativePopoverHost::close()
{
    m_isClosingOnRequest = true;
    [m_popover close];
    m_isClosingOnRequest = false;
}

void NativePopoverHost::popoverWillClose()
{
    if (!m_isClosingOnRequest)
        m_closingClick.closedByItself(m_parts.clock());
}

void NativePopoverHost::popoverDidClose()
{
    if (isShown() || !m_content) {
        announceClosing();
        return;
    }
    m_popover.contentViewController = nil;
    QObject::connect(retireContent(), &QObject::destroyed, &m_context, [this] { announceClosing(); });
}

QWidget* NativePopoverHost::retireContent()
{
    m_watch.reset();
    std::erase_if(m_leaving, [](const QPointer<QWidget>& content) { return content.isNull(); });
    QWidget* const leaving = m_content.release();
    m_leaving.emplace_back(leaving);
    leaving->hide();
    leaving->deleteLater();
    return leaving;
}

void NativePopoverHost::fitToContent()
{
    if (m_content)
        m_popover.contentSize = NSMakeSize(m_content->width(), m_content->height());
}

void NativePopoverHost::announceClosing()
{
    if (m_didClose)
        m_didClose();
}

} // namespace amperly
