"""The power flow panel: it opens at the item and closes again."""

import unittest

from support import DesktopTest, InWaybar, InXfce

PANEL_WIDTH = 340  # logical pixels of its content
NEAR = 40  # logical pixels between the bar and the panel


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


del Panel

if __name__ == "__main__":
    unittest.main(verbosity=2)
