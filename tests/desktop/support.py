"""Vocabulary of the desktop tests: a machine, a desktop with a panel, and Amperly on it.

The program comes in AMPERLY_PROGRAM, the folder for pictures in AMPERLY_PICTURES.
"""

import os
import pathlib
import sys
import time
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))

from desktop.amperly import Amperly, write_preferences  # noqa: E402
from desktop.power_machine import PowerMachine  # noqa: E402
from desktop.waiting import wait_until  # noqa: E402
from desktop.waybar import Waybar  # noqa: E402
from desktop.xfce_panel import XfcePanel  # noqa: E402

ROOT = pathlib.Path(__file__).resolve().parents[2]
PICTURES = pathlib.Path(os.environ.get("AMPERLY_PICTURES", ROOT / "build/desktop-pictures"))
DASH = "\u2013"

# Most tests read often, to be over soon. Whether the usual interval is kept has its own test.
SHORT_INTERVAL_SECONDS = 0.5
FOLLOWING_SECONDS = 5  # until a change must show, on a busy machine
STAYING_SECONDS = 0.4  # for which something that should stay closed is looked at


class DesktopTest(unittest.TestCase):
    """One desktop for all tests of a class; each test has its own Amperly and machine."""

    @staticmethod
    def make_desktop():
        return XfcePanel()

    @classmethod
    def setUpClass(cls):
        cls.desktop = cls.enterClassContext(cls.make_desktop())
        cls.empty = cls.desktop.below_panel()

    def setUp(self):
        self.amperly = None
        self.machine = None
        self.variables = {}  # of Amperly's environment, besides
        self.addCleanup(self.clean_up)

    def clean_up(self):
        # An open menu must give the pointer back before its program is gone.
        self.desktop.click_elsewhere()
        if self.amperly is not None:
            if self.amperly.program.running:
                self.amperly.close_settings()
                self.desktop.wait_until_closed(self.empty)
            self.amperly.program.end()
        preferences = self.desktop.configuration / "amperly"
        for file in preferences.iterdir() if preferences.exists() else []:
            file.unlink()
        wait_until(lambda: not self.desktop.status_area_ink(), 10, "the status area to become empty")

    def on_battery(self, **battery):
        """A machine whose battery carries 12.3 W at 82 %, its charger unplugged."""
        self.machine = PowerMachine(self.desktop)
        self.machine.add_adapter()
        self.machine.add_battery(**battery)

    def without_power_supply(self):
        self.machine = PowerMachine(self.desktop)

    def start(self, **preferences):
        """Starts Amperly on the machine, with these preferences, and waits for its item."""
        self.launch(**preferences)
        self.amperly.wait_until_shown()

    def launch(self, **preferences):
        write_preferences(self.desktop, **{
            "updateInterval": SHORT_INTERVAL_SECONDS, "smoothing": False, **preferences})
        self.launch_as_installed()

    def launch_as_installed(self):
        """Starts Amperly with what preferences there are."""
        program = os.environ.get("AMPERLY_PROGRAM")
        if not program:
            self.fail("AMPERLY_PROGRAM does not say where the program is")
        self.amperly = Amperly(self.desktop, program, self.machine, **self.variables)

    def watch_opener(self):
        """Puts a program in the place of the desktop's opener. Returns the file that it writes the
        number of its arguments and the first of them into."""
        opened = self.desktop.home / "opened"
        programs = self.desktop.home / "programs"
        opener = self.desktop.write(
            programs / "xdg-open", f'#!/bin/sh\necho "$# $1" >{opened}.part && mv {opened}.part {opened}\n')
        opener.chmod(0o755)
        self.addCleanup(opened.unlink, missing_ok=True)
        self.variables["PATH"] = f"{programs}:{os.environ['PATH']}"
        return opened

    def eventually(self, predicate, what, timeout=FOLLOWING_SECONDS):
        return wait_until(predicate, timeout, what)

    def stays(self, predicate, what, seconds=STAYING_SECONDS):
        """Checks that something that is true does not end by itself at once."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            self.assertTrue(predicate(), what)
            time.sleep(0.02)

    def wait_for_label(self, text, timeout=FOLLOWING_SECONDS):
        """Waits until the item's spoken label is exactly this."""
        wait_until(lambda: self.label() == text, timeout,
                   lambda: f"the label '{text}'; it is '{self.label()}'")

    def label(self):
        items = self.amperly.items()
        return items[0].spoken_label() if items else None

    def menu_labels(self):
        return [line.label for line in self.amperly.item().menu() if not line.separator]

    def _callTestMethod(self, method):
        try:
            super()._callTestMethod(method)
        except Exception:
            self._leave_evidence()
            raise

    def _leave_evidence(self):
        name = self.id().rpartition(".")[0].rpartition(".")[2] + "." + self._testMethodName
        print(f"\nThe screen as it was: {self.desktop.screenshot().save(PICTURES / 'failed' / f'{name}.png')}")
        if self.amperly is not None:
            print(f"Amperly's status is {self.amperly.program.status}; it said:\n{self.amperly.program.output()}")


class InXfce:
    """Under XFCE's panel, on X11."""

    @staticmethod
    def make_desktop():
        return XfcePanel()


class InWaybar:
    """Under Waybar, on Wayland."""

    @staticmethod
    def make_desktop():
        return Waybar()


if __name__ == "__main__":
    raise SystemExit("these are no tests")
