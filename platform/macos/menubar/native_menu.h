// The plain menu as the system's own. It follows every change of the portable one, also while
// it is open.
#pragma once

#include "platform/menu.h"

#import <AppKit/AppKit.h>

#include <functional>

@class AMPMenuDelegate;

namespace amperly {

class NativeMenu {
public:
    /// `menu` must be there for as long as the user can open this. `didClose` is called after it
    /// has closed, before what was chosen is done.
    NativeMenu(Menu& menu, std::function<void()> didClose);
    ~NativeMenu();
    NativeMenu(const NativeMenu&) = delete;
    NativeMenu& operator=(const NativeMenu&) = delete;

    [[nodiscard]] NSMenu* menu() const { return m_native; }
    [[nodiscard]] bool isOpen() const { return m_isOpen; }

private:
    void refresh(int index);

    Menu& m_menu;
    bool m_isOpen = false;
    NSMenu* m_native;
    AMPMenuDelegate* m_delegate;
    Subscription m_subscription;
};

} // namespace amperly
