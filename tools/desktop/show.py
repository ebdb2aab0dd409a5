#!/usr/bin/python3
"""Shows a program with a status item where there is no display.

Starts a virtual screen with a panel and the program on it, checks that the item is really there,
and leaves pictures: the item, its menu, its panel and its settings window.
"""

import argparse
import pathlib
import select
import signal
import sys

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))

try:
    from desktop.amperly import Amperly
    from desktop.status_area import DARK, LIGHT
    from desktop.waiting import DesktopError, wait_until
    from desktop.waybar import Waybar
    from desktop.xfce_panel import XfcePanel
except ImportError as error:
    sys.exit(f"show: {error.name} for Python is missing; packaging/debian/desktop.txt lists what it takes")

ITEM_CONTEXT = 90  # logical pixels of panel left of the item
ITEM_ENLARGEMENT = 6
MARGIN = 24  # logical pixels around what a picture is about


class Gallery:
    """Takes the pictures, each for itself: one that fails does not keep the next from being tried."""

    def __init__(self, desktop, amperly, folder):
        self._desktop = desktop
        self._amperly = amperly
        self._folder = folder

    def take(self):
        """Returns whether all went well."""
        worked = [self._try("status item", self._status_item)]
        if worked[0]:
            worked.append(self._try("menu", lambda: self._opened("menu", button=3)))
            worked.append(self._try("panel", lambda: self._opened("panel", button=1)))
            worked.append(self._try("settings window", self._settings))
        return all(worked)

    def _try(self, what, take):
        try:
            take()
            return True
        except DesktopError as error:
            print(f"show: no picture of the {what}: {error}", file=sys.stderr)
            return False

    def _status_item(self):
        left, _, right, _ = self._amperly.wait_until_shown()
        scale = self._desktop.scale
        context = self._desktop.panel_picture()
        start = max(0, left - ITEM_CONTEXT * scale)
        context = context.cut(start, 0, context.width - start, context.height)
        self._save("status-item", context.enlarged(max(1, ITEM_ENLARGEMENT // scale)))

    def _opened(self, name, button):
        before = self._desktop.below_panel()
        self._amperly.click(button)
        left, _, _, bottom = self._desktop.opened_area(before)
        self._save_around(name, left, 0, self._desktop.width, bottom)  # with the item
        self._desktop.click_elsewhere()
        self._desktop.wait_until_closed(before)

    def _settings(self):
        before = self._desktop.below_panel()
        second = self._amperly.start_again()
        status = second.wait(timeout=10)
        if status != 0:
            raise DesktopError(f"the second start ended with status {status}: {second.last_line()}")
        wait_until(self._amperly.settings_windows, 10, "the settings window to open")
        self._save_around("settings", *self._desktop.opened_area(before))
        self._amperly.close_settings()

    def _save_around(self, name, left, top, right, bottom):
        margin = MARGIN * self._desktop.scale
        left, top = max(0, left - margin), max(0, top - margin)
        self._save(name, self._desktop.screenshot(
            left, top, min(self._desktop.width, right + margin) - left,
            min(self._desktop.height, bottom + margin) - top))

    def _save(self, name, picture):
        print(picture.save(self._folder / f"{name}.png"), flush=True)


def show(options):
    panel = Waybar(options.scale) if options.panel == "waybar" else XfcePanel(options.scale, options.look)
    with panel as desktop:
        amperly = Amperly(desktop, options.program)
        gallery = Gallery(desktop, amperly, options.output)
        worked = gallery.take()
        if worked and sys.stdin.isatty() and sys.stdout.isatty():
            keep_running(amperly, gallery)
        if worked and amperly.program.status not in (None, 0):
            amperly.program.require_running()
        return 0 if worked else 1


def keep_running(amperly, gallery):
    print("It keeps running. Enter takes the pictures anew, Ctrl-C ends it.", flush=True)
    while amperly.program.running:
        if select.select([sys.stdin], [], [], 1)[0]:
            if not sys.stdin.readline():
                return
            gallery.take()


def arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", required=True, type=pathlib.Path)
    parser.add_argument("--output", required=True, type=pathlib.Path, help="folder for the pictures")
    parser.add_argument("--scale", type=int, choices=(1, 2), default=1)
    parser.add_argument("--panel", choices=("xfce", "waybar"), default="xfce")
    parser.add_argument("--look", choices=(DARK, LIGHT), default=DARK, help="of the XFCE panel")
    return parser.parse_args()


def main():
    options = arguments()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))  # leaves the context, which ends all
    try:
        return show(options)
    except DesktopError as error:
        print(f"show: {error}", file=sys.stderr)
        return 1
    except OSError as error:
        print(f"show: {error.filename or 'the pictures'}: {error.strerror}", file=sys.stderr)
        return 1
    except KeyboardInterrupt:
        print()
        return 0


if __name__ == "__main__":
    sys.exit(main())
