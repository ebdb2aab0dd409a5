// The fake AppKit's menus.

// The classes do what is needed of them and nothing more.
#pragma clang diagnostic ignored "-Wincomplete-implementation"
#pragma clang diagnostic ignored "-Wobjc-designated-initializers"
#pragma clang diagnostic ignored "-Wprotocol"
#pragma clang diagnostic ignored "-Wunused-parameter"

#define weak assign // objects live until the program ends, so that nothing has to be weak

#include "tests/platform/macos/fakes/app_kit.h"

#include <utility>

using namespace amperly::fake_mac;

namespace {

NSMenu* openMenu;
MenuUse menuUse;

void endTracking(NSMenu* menu, std::optional<int> choice)
{
    openMenu = nil;
    if ([of(menu).delegate respondsToSelector:@selector(menuDidClose:)])
        [of(menu).delegate menuDidClose:menu];
    if (!choice)
        return;
    NSMenuItem* const item = of(menu).items.at(static_cast<size_t>(*choice));
    if (item.isEnabled)
        send(item.target, item.action, item);
}

} // namespace

@implementation NSMenuItem
REMEMBERED(NSString*, title, setTitle)
REMEMBERED(id, target, setTarget)
REMEMBERED(SEL, action, setAction)
REMEMBERED(NSInteger, tag, setTag)
- (BOOL)isHidden
{
    return of(self).hidden;
}

- (void)setHidden:(BOOL)hidden
{
    of(self).hidden = hidden;
}

+ (NSMenuItem*)separatorItem
{
    NSMenuItem* const item = [[NSMenuItem alloc] initWithTitle:@"" action:nullptr keyEquivalent:@""];
    of(item).separator = YES;
    return item;
}

- (instancetype)initWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)key
{
    of(self).title = title;
    of(self).action = action;
    of(self).key = key;
    return self;
}

- (BOOL)isEnabled
{
    return of(self).enabled;
}

- (void)setEnabled:(BOOL)enabled
{
    of(self).enabled = enabled;
}

@end

@implementation NSMenu
REMEMBERED(id<NSMenuDelegate>, delegate, setDelegate)
REMEMBERED(BOOL, autoenablesItems, setAutoenablesItems)

- (instancetype)initWithTitle:(NSString*)title
{
    return self;
}

- (void)addItem:(NSMenuItem*)item
{
    of(self).items.push_back(item);
}

- (NSMenuItem*)itemAtIndex:(NSInteger)index
{
    return of(self).items.at(static_cast<size_t>(index));
}

@end

namespace amperly::fake_mac {

void track(NSMenu* menu)
{
    if (openMenu != nil)
        fault("a menu opened while one is open");
    openMenu = menu;
    ++stage().menuOpenings;
    if ([of(menu).delegate respondsToSelector:@selector(menuWillOpen:)])
        [of(menu).delegate menuWillOpen:menu];
    stage().menu.clear();
    for (NSMenuItem* const item : of(menu).items) {
        if (!item.isHidden)
            stage().menu.push_back({.title = textOf(item.title),
                .shortcut = textOf(of(item).key),
                .separator = of(item).separator == YES,
                .enabled = item.isEnabled && (!of(menu).autoenablesItems || item.target != nil)});
    }
    if (!stage().system.menuWaits)
        return;
    const MenuUse use = std::exchange(menuUse, {});
    endTracking(menu, use ? use() : std::nullopt);
}

void setMenuUse(const MenuUse& use)
{
    menuUse = use;
}

void resetMenus()
{
    openMenu = nil;
    menuUse = {};
}

void closeMenu()
{
    if (openMenu != nil)
        endTracking(openMenu, std::nullopt);
}

} // namespace amperly::fake_mac
