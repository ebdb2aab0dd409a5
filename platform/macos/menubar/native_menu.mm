#include "platform/macos/menubar/native_menu.h"

#include "platform/macos/foundation/strings.h"

#include <utility>

/// Hears from the system's menu and from its items.
@interface AMPMenuDelegate : NSObject <NSMenuDelegate> {
@public
    std::function<void()> _willOpen;
    std::function<void()> _didClose;
    std::function<void(NSInteger)> _chosen;
}
@end

@implementation AMPMenuDelegate

- (void)menuWillOpen:(NSMenu*)menu
{
    if (_willOpen)
        _willOpen();
}

- (void)menuDidClose:(NSMenu*)menu
{
    if (_didClose)
        _didClose();
}

- (void)choose:(NSMenuItem*)item
{
    if (_chosen)
        _chosen(item.tag);
}

@end

namespace amperly {
namespace {

NSMenuItem* makeItem(const MenuEntry& entry, NSInteger index, id target)
{
    if (entry.separator)
        return [NSMenuItem separatorItem];
    const bool acts = static_cast<bool>(entry.activate);
    const std::string key = entry.shortcut != 0 ? std::string(1, entry.shortcut) : std::string();
    NSMenuItem* const item = [[NSMenuItem alloc] initWithTitle:nsString(entry.title)
                                                        action:acts ? @selector(choose:) : nullptr
                                                 keyEquivalent:nsString(key)];
    item.target = acts ? target : nil;
    item.tag = index;
    item.enabled = entry.enabled;
    item.hidden = !entry.visible;
    return item;
}

} // namespace

NativeMenu::NativeMenu(Menu& menu, std::function<void()> didClose)
    : m_menu(menu), m_native([[NSMenu alloc] initWithTitle:@""]), m_delegate([AMPMenuDelegate new])
{
    m_delegate->_willOpen = [this] {
        m_isOpen = true;
        m_menu.announceWillOpen();
    };
    m_delegate->_didClose = [this, didClose = std::move(didClose)] {
        m_isOpen = false;
        m_menu.announceDidClose();
        didClose();
    };
    m_delegate->_chosen = [this](NSInteger index) {
        const auto activate = m_menu.entries()[static_cast<std::size_t>(index)].activate;
        activate();
    };
    m_subscription = menu.onEntryChanged([this](int index) { refresh(index); });
    m_native.autoenablesItems = NO;
    m_native.delegate = m_delegate;
    NSInteger index = 0;
    for (const MenuEntry& entry : menu.entries())
        [m_native addItem:makeItem(entry, index++, m_delegate)];
}

NativeMenu::~NativeMenu()
{
    // The system may hold its menu longer than this lives. The portable one may be gone already.
    m_native.delegate = nil;
    m_delegate->_willOpen = nullptr;
    m_delegate->_didClose = nullptr;
    m_delegate->_chosen = nullptr;
}

void NativeMenu::refresh(int index)
{
    const MenuEntry& entry = m_menu.entries()[static_cast<std::size_t>(index)];
    NSMenuItem* const item = [m_native itemAtIndex:index];
    item.title = nsString(entry.title);
    item.hidden = !entry.visible;
}

} // namespace amperly
