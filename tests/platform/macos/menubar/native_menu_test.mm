#include "platform/macos/menubar/native_menu.h"

#include "tests/platform/macos/fakes/fake_desktop_test.h"

namespace amperly {
namespace {

class NativeMenuTest : public FakeDesktopTest {
protected:
    NativeMenuTest()
    {
        MenuEntry reading;
        reading.title = "Mac using: 12.3 W";
        reading.enabled = false;
        menu.add(reading);
        MenuEntry separator;
        separator.separator = true;
        menu.add(separator);
        MenuEntry settings;
        settings.title = "Settings…";
        settings.shortcut = ',';
        settings.activate = [this] { log.emplace_back("settings"); };
        menu.add(settings);
        MenuEntry hidden;
        hidden.title = "Charger: 96 W";
        hidden.visible = false;
        menu.add(hidden);
        menu.willOpen = [this] { log.emplace_back("will open"); };
        menu.didClose = [this] { log.emplace_back("did close"); };
        native.emplace(menu, [this] { log.emplace_back("closed"); });
        item = [NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength];
        item.menu = native->menu();
    }

    void TearDown() override
    {
        [NSStatusBar.systemStatusBar removeStatusItem:item];
        FakeDesktopTest::TearDown();
    }

    Menu menu;
    std::vector<std::string> log;
    std::optional<NativeMenu> native;
    NSStatusItem* item;
};

TEST_F(NativeMenuTest, EntriesLookAsTheMenuSays)
{
    fake_mac::click(fake_mac::kLeft);
    using Row = fake_mac::MenuRow;
    EXPECT_THAT(stage.menu,
        testing::ElementsAre(Row{.title = "Mac using: 12.3 W", .enabled = false}, Row{.separator = true},
            Row{.title = "Settings…", .shortcut = ","}));
}

TEST_F(NativeMenuTest, WhatWasChosenIsDoneAfterTheMenuHasClosed)
{
    fake_mac::click(fake_mac::kLeft, [this] {
        EXPECT_TRUE(native->isOpen());
        return 2;
    });
    EXPECT_FALSE(native->isOpen());
    EXPECT_THAT(log, testing::ElementsAre("will open", "did close", "closed", "settings"));
}

TEST_F(NativeMenuTest, ALineThatOnlySaysSomethingDoesNothing)
{
    fake_mac::click(fake_mac::kLeft, [] { return 0; });
    EXPECT_THAT(log, testing::ElementsAre("will open", "did close", "closed"));
}

TEST_F(NativeMenuTest, EntriesChangeWhileTheMenuIsOpen)
{
    fake_mac::click(fake_mac::kLeft, [this] {
        menu.setTitle(0, "Mac using: 13.0 W");
        menu.setVisible(3, true);
        EXPECT_EQ(std::string([native->menu() itemAtIndex:0].title.UTF8String), "Mac using: 13.0 W");
        EXPECT_FALSE([native->menu() itemAtIndex:3].isHidden);
        return std::nullopt;
    });
}

TEST_F(NativeMenuTest, ATitleMadeBeforeOpeningIsTheOneThatOpens)
{
    menu.willOpen = [this] { menu.setTitle(0, "Mac using: 9.9 W"); };
    fake_mac::click(fake_mac::kLeft);
    EXPECT_EQ(stage.menu[0].title, "Mac using: 9.9 W");
}

TEST_F(NativeMenuTest, WithItsEndTheMenuIsLetGo)
{
    native.reset();
    menu.setTitle(0, "Mac using: 1.0 W");
    fake_mac::click(fake_mac::kLeft, [] { return 2; });
    EXPECT_THAT(log, testing::IsEmpty());
}

} // namespace
} // namespace amperly
