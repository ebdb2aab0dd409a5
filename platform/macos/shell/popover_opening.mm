#include "platform/macos/shell/popover_opening.h"

#include <QKeyEvent>

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

/// Looks at what happens to the widget in the popover: a size of its own, and the Esc key.
class PopoverOpening::ContentWatch : public QObject {
public:
    ContentWatch(QWidget& content, PopoverOpening& opening, std::function<void()> escape)
        : m_opening(opening), m_escape(std::move(escape))
    {
        content.installEventFilter(this);
    }

    bool eventFilter(QObject* content, QEvent* event) override
    {
        if (event->type() == QEvent::Resize)
            m_opening.fitToContent();
        if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
            const std::function<void()> escape = m_escape; // which may end this watch
            escape();
            return true;
        }
        return QObject::eventFilter(content, event);
    }

private:
    PopoverOpening& m_opening;
    std::function<void()> m_escape;
};

PopoverOpening::PopoverOpening(
    std::unique_ptr<QWidget> content, const ViewOf& viewOf, NSView* anchor, Handlers handlers)
    : m_popover([NSPopover new]), m_delegate([AMPPopoverDelegate new]), m_content(content.release())
{
    m_delegate->_willClose = std::move(handlers.willClose);
    m_delegate->_didClose = std::move(handlers.didClose);
    m_popover.behavior = NSPopoverBehaviorTransient;
    m_popover.animates = YES;
    m_popover.delegate = m_delegate;

    // Guarded pointers would hear of it after whoever is told by this signal, too.
    QObject::connect(m_content, &QObject::destroyed, [this] { m_content = nullptr; });
    m_content->adjustSize();
    const NSSize size = NSMakeSize(m_content->width(), m_content->height());
    NSView* const container = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, size.width, size.height)];
    NSViewController* const controller = [[NSViewController alloc] initWithNibName:nil bundle:nil];
    controller.view = container;
    m_popover.contentViewController = controller;
    m_popover.contentSize = size;
    [m_popover showRelativeToRect:anchor.bounds ofView:anchor preferredEdge:NSRectEdgeMinY];

    // Only now, with the popover's window around it: shown without a window, the toolkit's view
    // would be given one of its own, and its frames would come from no display.
    NSView* const view = viewOf(*m_content);
    view.frame = container.bounds;
    view.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
    [container addSubview:view];
    m_watch = std::make_unique<ContentWatch>(*m_content, *this, std::move(handlers.escape));
    m_content->show();
    [container.window makeKeyWindow];
    [container.window makeFirstResponder:view];
}

PopoverOpening::~PopoverOpening()
{
    m_popover.delegate = nil;
    m_delegate->_willClose = nullptr;
    m_delegate->_didClose = nullptr;
    m_popover.animates = NO;
    [m_popover close];
    m_popover.contentViewController = nil;
    m_watch.reset();
    delete m_content;
}

QWidget* PopoverOpening::retireContent()
{
    m_watch.reset();
    m_content->hide();
    m_popover.contentViewController = nil;
    m_content->deleteLater();
    return m_content;
}

void PopoverOpening::fitToContent()
{
    m_popover.contentSize = NSMakeSize(m_content->width(), m_content->height());
}

} // namespace amperly
