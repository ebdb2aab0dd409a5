"""The menu: as it is exported, as panels draw it, and what its lines do."""

import unittest

from support import DASH, DesktopTest, InWaybar, InXfce

ACTIONS = ["Settings…", "Buy Me a Coffee ☕", "Quit Amperly"]


class Menu(DesktopTest):
    def test_lines_are_the_readings_and_the_actions(self):
        self.on_battery()
        self.start()
        self.assertEqual(self.menu_labels(), [
            "Mac using: 12.3 W", "On battery", "Battery draining: 12.3 W (82%)", *ACTIONS])

    def test_readings_can_not_be_chosen_and_actions_can(self):
        self.on_battery()
        self.start()
        enabled = [line.enabled for line in self.amperly.item().menu() if not line.separator]
        self.assertEqual(enabled, [False] * 3 + [True] * 3)

    def test_a_separator_stands_between_readings_and_actions(self):
        self.on_battery()
        self.start()
        lines = self.amperly.item().menu()
        self.assertEqual([index for index, line in enumerate(lines) if line.separator], [3])

    def test_charger_has_its_line_when_plugged_in(self):
        self.on_battery()
        self.machine.plug_in(power_now=20000000)
        self.start()
        self.assertEqual(self.menu_labels(), [
            f"Mac using: {DASH}", f"From charger: {DASH}", "Battery charging: 20.0 W (82%)", *ACTIONS])

    def test_without_power_data_one_line_says_so(self):
        self.without_power_supply()
        self.start()
        self.assertEqual(self.menu_labels(), ["No power data available", *ACTIONS])

    def test_panel_draws_the_menu_at_a_right_click(self):
        self.on_battery()
        self.start()
        self.open_menu()
        self.assertEqual(self.amperly.settings_windows(), [])

    def test_menu_has_its_full_size_when_it_opens_for_the_first_time(self):
        self.on_battery()
        self.start()
        before = self.desktop.below_panel()
        sizes = []
        for _ in range(2):
            left, top, right, bottom = self.open_menu()
            sizes.append((right - left, bottom - top))
            self.desktop.click_elsewhere()
            self.desktop.wait_until_closed(before)
        self.assertEqual(sizes[0], sizes[1])

    def test_open_menu_follows_the_power_files(self):
        self.on_battery()
        self.start()
        left, top, right, bottom = self.open_menu()
        shown = self.desktop.screenshot(left, top, right - left, bottom - top)
        self.machine.change("BAT0", power_now=34500000)
        self.eventually(lambda: self.exported_lines()[0] == "Mac using: 34.5 W", "the new figure")
        self.eventually(lambda: self.desktop.screenshot(left, top, right - left, bottom - top) != shown,
                        "the menu on the screen to change")

    def test_quit_ends_the_program_well(self):
        self.on_battery()
        self.start()
        self.amperly.item().choose("Quit Amperly")
        self.assertEqual(self.amperly.program.wait(), 0)

    def test_donation_line_starts_the_desktops_opener(self):
        opened = self.watch_opener()
        self.on_battery()
        self.start()
        self.amperly.item().choose("Buy Me a Coffee ☕")
        self.eventually(opened.exists, "the opener to be started")
        self.assertRegex(opened.read_text(), r"^1 https://\S+\n$")

    def test_settings_line_opens_the_settings_window(self):
        self.on_battery()
        self.start()
        self.amperly.item().choose("Settings…")
        self.eventually(self.amperly.settings_windows, "the settings window")

    def test_left_click_shows_the_menu_where_so_preferred(self):
        self.on_battery()
        self.start(clickShows="menu", updateInterval=60)
        before = self.desktop.below_panel()
        self.machine.change("BAT0", power_now=5000000)
        self.amperly.click()
        self.desktop.opened_area(before)
        # Opening the menu takes a reading; the timer would take a minute.
        self.wait_for_label("Mac using 5.0 W, Battery draining: 5.0 W (82%)")

    def open_menu(self):
        before = self.desktop.below_panel()
        self.amperly.click(button=3)
        return self.desktop.opened_area(before)

    def exported_lines(self):
        return [line.label for line in self.amperly.item().menu_lines() if not line.separator]


class MenuInXfce(InXfce, Menu):
    def test_quit_is_the_last_line_on_the_screen(self):
        self.on_battery()
        self.start()
        self.open_menu()
        self.desktop.press("Up", "Return")
        self.assertEqual(self.amperly.program.wait(), 0)

    def test_settings_is_the_third_line_from_below_on_the_screen(self):
        self.on_battery()
        self.start()
        self.open_menu()
        self.desktop.press("Up", "Up", "Up", "Return")
        self.eventually(self.amperly.settings_windows, "the settings window")


class MenuInWaybar(InWaybar, Menu):
    def test_quit_is_the_last_line_on_the_screen(self):
        self.on_battery()
        self.start()
        left, _, right, bottom = self.open_menu()
        self.desktop.click((left + right) // 2, bottom - 12 * self.desktop.scale)
        self.assertEqual(self.amperly.program.wait(), 0)


del Menu

if __name__ == "__main__":
    unittest.main(verbosity=2)
