"""The power flow panel: it opens at the item and closes again."""

import re
import time
import unittest

from support import DesktopTest, InWaybar, InXfce

from desktop import accessible

PANEL_WIDTH = 340  # logical pixels of its content
NEAR = 40  # logical pixels between the bar and the panel
SETTLED_SECONDS = 1.0  # after closing, until a last line has been printed
FPS_LINE = re.compile(r"fps (\d+)  worst gap (\d+) ms")


class Panel(DesktopTest):
    def test_left_click_opens_the_panel_at_the_item(self):
        item, panel = self.open_panel()
        self.assertLess(panel[1], self.desktop.panel_height + NEAR)
        self.assertGreaterEqual(panel[2] - panel[0], PANEL_WIDTH - 8)
        self.assertLess(panel[2] - panel[0], PANEL_WIDTH * 1.3)
        # In line with the item, or against the edge of the screen where that has no room.
        self.assertLess(panel[0], item[2])
        self.assertGreater(panel[2], item[0])

    def test_second_click_closes_it(self):
        item, _ = self.open_panel()
        self.desktop.click((item[0] + item[2]) // 2, (item[1] + item[3]) // 2)
        self.wait_until_closed()

    def test_escape_closes_it(self):
        self.open_panel()
        self.desktop.press("Escape")
        self.wait_until_closed()

    def test_click_elsewhere_closes_it(self):
        self.open_panel()
        self.desktop.click_elsewhere()
        self.wait_until_closed()

    def test_it_opens_again_after_it_was_closed(self):
        self.open_panel()
        self.desktop.press("Escape")
        self.wait_until_closed()
        self.amperly.click()
        self.desktop.opened_area(self.before)

    def test_right_click_puts_the_menu_in_its_place(self):
        item, panel = self.open_panel()
        self.desktop.click((item[0] + item[2]) // 2, (item[1] + item[3]) // 2, 3)
        self.eventually(lambda: self.area() not in (None, panel), "the menu in place of the panel")
        self.assertTrue(self.amperly.program.running)

    def test_control_comma_closes_it_and_opens_the_settings(self):
        self.open_panel()
        self.desktop.press("ctrl+comma")
        self.eventually(self.amperly.settings_windows, "the settings window")
        self.amperly.close_settings()
        self.wait_until_closed()

    def test_first_stop_of_the_tab_key_is_settings(self):
        self.open_panel()
        self.desktop.press("Tab", "Return")
        self.eventually(self.amperly.settings_windows, "the settings window")

    def test_link_opens_its_address_and_leaves_the_desktop_to_it(self):
        opened = self.watch_opener()
        self.open_panel()
        self.desktop.press("Tab", "Tab", "Return")
        self.eventually(opened.exists, "the opener to be started")
        self.assertRegex(opened.read_text(), r"^1 https://\S+\n$")
        self.wait_until_closed()

    def test_control_q_ends_the_program(self):
        self.open_panel()
        self.desktop.press("ctrl+q")
        self.assertEqual(self.amperly.program.wait(), 0)

    def test_frames_keep_to_the_display_and_end_with_the_panel(self):
        self.variables = {"AMPERLY_FPS": "1"}
        self.open_panel()
        self.eventually(lambda: len(self.frame_lines()) >= 3, "three lines about frames", 10)
        for line in self.frame_lines():
            rate, gap = (int(number) for number in FPS_LINE.fullmatch(line).groups())
            self.assertGreater(rate, 10, line)
            self.assertLess(rate, 75, line)  # the virtual displays have 60 frames a second
            self.assertGreaterEqual(gap, 10, line)
        self.desktop.press("Escape")
        self.wait_until_closed()
        time.sleep(SETTLED_SECONDS)
        before = self.amperly.program.output()
        self.stays(lambda: self.amperly.program.output() == before, "frames after closing", 1.5)

    def test_nothing_is_printed_about_frames_unless_asked_for(self):
        self.open_panel()
        time.sleep(1.5)
        self.assertEqual(self.frame_lines(), [])

    def test_where_animations_are_off_nothing_moves(self):
        self.variables = {"AMPERLY_FPS": "1", "XDG_CURRENT_DESKTOP": "KDE"}
        self.desktop.write(self.desktop.configuration / "kdeglobals", "[KDE]\nAnimationDurationFactor=0\n")
        self.addCleanup((self.desktop.configuration / "kdeglobals").unlink)
        _, panel = self.open_panel()
        left, top, right, bottom = panel
        picture = self.eventually(lambda: self.desktop.screenshot(left, top, right - left, bottom - top), "a picture")
        self.stays(lambda: self.desktop.screenshot(left, top, right - left, bottom - top) == picture,
                   "something moves", 1.5)
        self.assertEqual(self.frame_lines(), [])

    def frame_lines(self):
        return [line for line in self.amperly.program.output().splitlines() if line.startswith("fps")]

    def open_panel(self):
        """Returns the bounds of item and panel."""
        self.on_battery()
        self.start()
        item = self.desktop.wait_for_ink()
        self.before = self.desktop.below_panel()
        self.amperly.click()
        return item, self.desktop.opened_area(self.before)

    def area(self):
        return self.desktop.opened_now(self.before)

    def wait_until_closed(self):
        # Away from the item, whose tooltip would look like something open.
        self.desktop.move_pointer(24, self.desktop.height - 24)
        self.desktop.wait_until_closed(self.before)
        self.stays(lambda: self.area() is None, "the panel opened again")
        self.assertTrue(self.amperly.program.running)


class PanelInXfce(InXfce, Panel):
    pass


class PanelInWaybar(InWaybar, Panel):
    pass


class ReadAloud(DesktopTest):
    """What a screen reader finds in the panel."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        accessible.enable(cls.desktop)

    def open_panel(self):
        self.start()
        before = self.desktop.below_panel()
        self.amperly.click()
        self.desktop.opened_area(before)

    def names(self, *roles):
        nodes = accessible.walk(accessible.tree_of(self.desktop, self.amperly.pid))
        return [node["name"] for node in nodes if node["role"] in roles]

    def wait_for_texts(self, *texts):
        self.eventually(lambda: [name for name in self.names("static", "label", "text") if name] == list(texts),
                        lambda: f"the texts {texts}; there are {self.names('static', 'label', 'text')}")

    def test_headline_pill_and_nodes_are_a_sentence_each(self):
        self.on_battery()
        self.open_panel()
        self.wait_for_texts("Mac is using 12.3 W", "On battery", "Charger unplugged", "Mac using 12.3 W",
                            "Battery draining: 12.3 W (82%)")

    def test_sentences_follow_the_machine(self):
        self.on_battery()
        self.open_panel()
        self.machine.plug_in(power_now=20000000)
        self.wait_for_texts("Mac is using \u2013", "Charging", "Charger supplying \u2013", "Mac using \u2013",
                            "Battery charging: 20.0 W (82%)")

    def test_without_a_reading_the_words_say_so(self):
        self.without_power_supply()
        self.open_panel()
        self.wait_for_texts("No power data available")

    def test_footer_has_two_buttons_and_a_link(self):
        self.on_battery()
        self.open_panel()
        self.eventually(lambda: "Quit" in self.names("button", "link"), "the footer")
        self.assertEqual(self.names("button", "link"), ["Settings", "\u2615 Buy me a coffee", "Quit"])


class ReadAloudInXfce(InXfce, ReadAloud):
    pass


class ReadAloudInWaybar(InWaybar, ReadAloud):
    pass


del Panel, ReadAloud

if __name__ == "__main__":
    unittest.main(verbosity=2)
