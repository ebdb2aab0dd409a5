// The program's item in the menu bar. The button hears of both mouse buttons on their way up;
// the menu is attached to the item for the length of one opening only, because an item with a
// menu keeps every click to itself.
#pragma once

#include "platform/macos/menubar/native_menu.h"
#include "platform/status_item.h"

#import <AppKit/AppKit.h>

#include <memory>
#include <string>

@class AMPClickTarget;

namespace amperly {

class MenuBarItem : public StatusItem {
public:
    MenuBarItem();
    ~MenuBarItem() override;
    MenuBarItem(const MenuBarItem&) = delete;
    MenuBarItem& operator=(const MenuBarItem&) = delete;

    void show(const StatusPicture& picture, std::optional<std::string_view> toolTip,
        std::string_view spokenLabel) override;

    /// Never called: the image holds the picture for screens of either kind.
    void onPictureWanted(std::function<void()>) override { }

    /// Clicks come without an anchor: what opens stands below button().
    void onClick(ClickHandler handler) override { m_clicked = std::move(handler); }

    void setMenu(Menu& menu) override;
    void openMenu(std::optional<ScreenPoint> anchor) override;

    /// Points that pictures in the menu bar are high.
    [[nodiscard]] static double barHeight() { return NSStatusBar.systemStatusBar.thickness; }

    /// What the user clicks at; nil where the system gives the item none.
    [[nodiscard]] NSStatusBarButton* button() const { return m_item.button; }

private:
    void click();

    NSStatusItem* m_item;
    AMPClickTarget* m_target;
    ClickHandler m_clicked;
    std::unique_ptr<NativeMenu> m_menu;

    // What is shown; nothing before the first picture.
    std::optional<std::uint64_t> m_key;
    std::optional<std::string> m_toolTip;
    std::string m_spokenLabel;
};

} // namespace amperly
