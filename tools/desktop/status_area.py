"""What all panels here have in common: a strip along the top edge, the status area at its right."""

import signal

from .status_item import has_watcher
from .waiting import DesktopError, wait_until, wait_until_steady

START_SECONDS = 20
SMALLEST_WINDOW = 40  # logical pixels each way
ELSEWHERE = 24  # logical pixels from the bottom left corner, where nothing ever opens

DARK, LIGHT = "dark", "light"
COLOURS = {DARK: (0x2B, 0x2D, 0x31), LIGHT: (0xEC, 0xEC, 0xEC)}


class StatusArea:
    """Mixed into a session that can take screenshots. A panel says how it is started."""

    kind = None  # a short name, for people and for file names
    panel_height = 30  # logical pixels
    look = DARK
    panel = None

    def panel_command(self):
        raise NotImplementedError

    def start_panel(self):
        """Starts the panel; its status area takes items when this returns."""
        self.panel = self.start(self.kind, self.panel_command())
        wait_until(lambda: not self.panel.running or (has_watcher(self.bus) and self._is_drawn()),
                   START_SECONDS, f"{self.kind} and its status area")
        self.panel.require_running()
        self.settle()

    def end_panel(self, number=signal.SIGTERM):
        """Ends the panel and waits until its status area is gone from the bus."""
        self.panel.end(number)
        wait_until(lambda: not has_watcher(self.bus), START_SECONDS, "the status area to leave")

    @property
    def panel_colour(self):
        return COLOURS[self.look]

    def panel_picture(self):
        return self.screenshot(0, 0, self.width, self.panel_height * self.scale)

    def settle(self):
        """Waits until the panel's picture has come to rest, and returns it."""
        return wait_until_steady(self.panel_picture, START_SECONDS, f"{self.kind}")

    def status_area_ink(self):
        """(left, top, right, bottom) of what is drawn in the panel; None for an empty one."""
        return self.panel_picture().ink(self.panel_colour)

    def wait_for_ink(self, timeout=10):
        """Waits until something is drawn in the status area and has come to rest; returns where."""
        wait_until(self.status_area_ink, timeout, "something to be drawn in the status area")
        self.settle()
        return wait_until(self.status_area_ink, timeout, "something to stay in the status area")

    def below_panel(self):
        """The picture of everything but the panel."""
        top = self.panel_height * self.scale
        return self.screenshot(0, top, self.width, self.height - top)

    def opened_now(self, before):
        """(left, top, right, bottom) on the screen of what has opened since `before`, a picture of
        below_panel(); None while nothing has. A pointer that looks out of the panel is nothing."""
        area = self.below_panel().changed_area(before)
        if area is None:
            return None
        left, top, right, bottom = area
        least = SMALLEST_WINDOW * self.scale
        if right - left < least or bottom - top < least:
            return None
        offset = self.panel_height * self.scale
        return left, top + offset, right, bottom + offset

    def opened_area(self, before, timeout=10):
        """Waits for something to open and to stay in its bounds, within which it may move."""
        wait_until(lambda: self.opened_now(before), timeout, "something to open")
        area = wait_until_steady(lambda: self.opened_now(before), timeout, "what opened")
        if area is None:
            raise DesktopError("what opened closed again by itself")
        return area

    def wait_until_closed(self, before, timeout=10):
        """Waits until nothing is open that was not in `before`."""
        wait_until(lambda: self.opened_now(before) is None, timeout, "what was open to close")

    def click_elsewhere(self):
        """Clicks where nothing is, which closes menus and the like, and leaves the pointer there."""
        nowhere = ELSEWHERE * self.scale, self.height - ELSEWHERE * self.scale
        self.click(*nowhere)
        # A panel that has lost sight of the pointer to something open shows a tooltip as if it were
        # still there, and takes it back only when the pointer has come and gone.
        ink = self.status_area_ink()
        if ink is not None:
            self.move_pointer((ink[0] + ink[2]) // 2, (ink[1] + ink[3]) // 2)
        self.move_pointer(*nowhere)

    def _is_drawn(self):
        return self.screenshot(0, 0, 4, 4).at(1, 1) == self.panel_colour
