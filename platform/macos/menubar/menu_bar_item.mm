#include "platform/macos/menubar/menu_bar_item.h"

#include "platform/macos/foundation/strings.h"
#include "platform/macos/menubar/template_image.h"

/// Where the button sends its clicks.
@interface AMPClickTarget : NSObject {
@public
    std::function<void()> _clicked;
}
@end

@implementation AMPClickTarget

- (void)click:(id)sender
{
    if (_clicked)
        _clicked();
}

@end

namespace amperly {
namespace {

/// Under this name the system remembers where the user has moved the item to, in this
/// preference of the program's.
NSString* const kName = @"Amperly";
NSString* const kPlaceKey = @"NSStatusItem Preferred Position Amperly";

/// Seconds after which an event is not what a click comes from.
constexpr double kLatestClick = 0.5;

/// Pressed by an assistive technology, the button has no mouse event of its own: the latest one is
/// from whenever the mouse was used last.
bool isRightClick(NSEvent* event)
{
    return event.type == NSEventTypeRightMouseUp
        && NSProcessInfo.processInfo.systemUptime - event.timestamp < kLatestClick;
}

} // namespace

MenuBarItem::MenuBarItem()
    : m_item([NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength])
    , m_target([AMPClickTarget new])
{
    m_item.autosaveName = kName;
    m_target->_clicked = [this] { click(); };

    NSStatusBarButton* const button = m_item.button;
    button.title = @"";
    button.imagePosition = NSImageOnly;
    button.target = m_target;
    button.action = @selector(click:);
    [button sendActionOn:NSEventMaskLeftMouseUp | NSEventMaskRightMouseUp];
}

MenuBarItem::~MenuBarItem()
{
    m_target->_clicked = nullptr;
    m_item.menu = nil;
    // Removing takes the item for one that the user is not to have any more, and forgets its place.
    NSUserDefaults* const defaults = NSUserDefaults.standardUserDefaults;
    const id place = [defaults objectForKey:kPlaceKey];
    [NSStatusBar.systemStatusBar removeStatusItem:m_item];
    if (place != nil)
        [defaults setObject:place forKey:kPlaceKey];
}

void MenuBarItem::show(
    const StatusPicture& picture, std::optional<std::string_view> toolTip, std::string_view spokenLabel)
{
    NSStatusBarButton* const button = m_item.button;
    if (button == nil)
        return;
    const bool isFirst = !m_key;
    if (const std::uint64_t key = picture.key(); m_key != key) {
        m_key = key;
        button.image = templateImage(picture);
    }
    if (isFirst || m_toolTip != toolTip) {
        m_toolTip = toolTip;
        button.toolTip = toolTip ? nsString(*toolTip) : nil;
    }
    if (isFirst || m_spokenLabel != spokenLabel) {
        m_spokenLabel = spokenLabel;
        [button setAccessibilityLabel:nsString(spokenLabel)];
    }
}

void MenuBarItem::click()
{
    if (m_clicked)
        m_clicked({.button = isRightClick(NSApp.currentEvent) ? ClickButton::Right : ClickButton::Left,
            .anchor = {}});
}

void MenuBarItem::setMenu(Menu& menu)
{
    m_menu = std::make_unique<NativeMenu>(menu, [this] { m_item.menu = nil; });
}

void MenuBarItem::openMenu(std::optional<ScreenPoint>)
{
    if (!m_menu)
        return;
    m_item.menu = m_menu->menu();
    [m_item.button performClick:nil];
    // The click returns when the menu has closed, which detached it. Should there have been no
    // opening, or should the system open menus without waiting for them, this still holds.
    if (!m_menu->isOpen())
        m_item.menu = nil;
}

} // namespace amperly
