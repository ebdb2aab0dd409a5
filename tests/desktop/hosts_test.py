"""Panels that come and go under a running program."""

import signal
import unittest

from support import DesktopTest, InWaybar, InXfce

from desktop.waiting import wait_until


class Host(DesktopTest):
    def tearDown(self):
        if not self.desktop.panel.running:
            self.desktop.start_panel()

    def test_item_comes_back_with_a_panel_that_was_restarted(self):
        self.on_battery()
        self.start()
        self.desktop.end_panel()
        self.desktop.start_panel()
        self.amperly.wait_until_shown()
        self.assertEqual(self.label(), "Mac using 12.3 W, Battery draining: 12.3 W (82%)")

    def test_item_comes_back_with_a_panel_that_was_killed(self):
        self.on_battery()
        self.start()
        count = len(self.amperly.items())
        self.desktop.end_panel(signal.SIGKILL)
        self.desktop.start_panel()
        self.amperly.wait_until_shown(count)

    def test_clicks_arrive_after_the_panel_was_restarted(self):
        self.on_battery()
        self.start()
        self.desktop.end_panel()
        self.desktop.start_panel()
        before = self.desktop.below_panel()
        self.amperly.click()
        self.desktop.opened_area(before)

    def test_item_appears_with_a_panel_that_starts_later(self):
        self.desktop.end_panel()
        self.on_battery()
        self.launch()
        wait_until(self.has_its_name, 10, "Amperly on the bus")
        self.desktop.start_panel()
        self.amperly.wait_until_shown()
        self.assertEqual(self.label(), "Mac using 12.3 W, Battery draining: 12.3 W (82%)")

    def has_its_name(self):
        return self.desktop.bus.has_name("io.github.amperly.Amperly")


class HostXfce(InXfce, Host):
    pass


class HostWaybar(InWaybar, Host):
    pass


del Host

if __name__ == "__main__":
    unittest.main(verbosity=2)
