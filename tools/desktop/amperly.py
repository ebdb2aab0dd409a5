"""The program under observation, running on a private desktop."""

import pathlib

from .status_item import items_of
from .waiting import DesktopError, wait_until

NAME = "io.github.amperly.Amperly"
DEMO_NAME = "io.github.amperly.AmperlyDemo"
SETTINGS_TITLE = "Amperly Settings"
SHOWN_SECONDS = 15


class Amperly:
    def __init__(self, desktop, program, machine=None, **variables):
        """`machine` is a PowerMachine, None for the real one's power files."""
        self.desktop = desktop
        self._path = desktop.reachable(program)
        self._variables = {**(machine.variables() if machine else {}), **variables}
        self.program = self.start_again()

    @property
    def pid(self):
        return self.program.pid

    def start_again(self):
        """Starts one more instance, with the same surroundings."""
        return self.desktop.start(pathlib.Path(self._path).name, [self._path], **self._variables)

    def items(self):
        """The status items it has registered, in the order of registration."""
        return items_of(self.desktop.bus, self.pid)

    def item(self):
        """Its first status item, which must be there."""
        items = self.items()
        if not items:
            raise DesktopError("Amperly has no status item")
        return items[0]

    def wait_until_registered(self, count=None, timeout=SHOWN_SECONDS):
        """Waits for status items, `count` of them or any number, and returns them."""
        def registered():
            self.program.require_running()
            items = self.items()
            return items if count in (None, len(items)) else None
        return wait_until(registered, timeout, lambda: (
            "a status item to be registered" if count is None
            else f"{count} status items to be registered; there are {len(self.items())}"))

    def wait_until_shown(self, count=None):
        """Waits until the status items are registered and drawn; returns the bounds of the ink."""
        self.wait_until_registered(count)
        return self.desktop.wait_for_ink()

    def click(self, button=1):
        """Clicks in the middle of what the status area shows."""
        left, top, right, bottom = self.desktop.wait_for_ink()
        self.desktop.click((left + right) // 2, (top + bottom) // 2, button)

    def settings_windows(self):
        return self.desktop.windows(self.pid, SETTINGS_TITLE)

    def close_settings(self):
        """Closes the settings window and waits until it is gone."""
        for window in self.settings_windows():
            self.desktop.close_window(window)
        wait_until(lambda: not self.settings_windows(), SHOWN_SECONDS, "the settings window to close")

    def preferences_file(self):
        return self.desktop.configuration / "amperly/amperly.ini"


def write_preferences(desktop, **values):
    """Writes the preferences file anew, by rename, as an editor does."""
    lines = "".join(f"{key}={_ini(value)}\n" for key, value in values.items())
    return desktop.write(desktop.configuration / "amperly/amperly.ini", lines)


def _ini(value):
    return str(value).lower() if isinstance(value, bool) else str(value)
