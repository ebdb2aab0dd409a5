"""A headless Wayland compositor with a pointer and a keyboard."""

import json
import os
import struct

from .picture import from_ppm
from .session import NOBODY, Session
from .shared_memory import ensure_shared_memory
from .vnc import VncInput
from .waiting import wait_until

WIDTH, HEIGHT = 1200, 900  # logical pixels
OUTPUT = "HEADLESS-1"

COMPOSITOR = """
output {output} resolution {width}x{height} scale {scale}
seat seat0 fallback true
default_border none
for_window [app_id=".*"] floating enable
xwayland disable
"""


# Names under which compositor, panels and programs ask for a pointer's picture.
POINTERS = ("left_ptr", "default", "pointer", "hand1", "hand2", "text", "xterm", "arrow")


class WaylandDesktop(Session):
    """`scale` is the pixels per logical pixel. Places are in pixels throughout."""

    def __init__(self, scale=1):
        ensure_shared_memory()
        # The compositor refuses to run as root; then all of the session is nobody's.
        super().__init__(NOBODY if os.geteuid() == 0 else None)
        self.scale = scale
        self.width, self.height = WIDTH * scale, HEIGHT * scale
        self._input = None

    def __enter__(self):
        super().__enter__()
        try:
            self._start_compositor()
            self._start_input()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *details):
        if self._input is not None:
            self._input.close()
            self._input = None
        super().__exit__(*details)

    def screenshot(self, x=0, y=0, width=None, height=None):
        right = self.width if width is None else x + width
        bottom = self.height if height is None else y + height
        # The tool counts in logical pixels: take whole ones, then cut.
        left, top = x // self.scale * self.scale, y // self.scale * self.scale
        across, down = -(-(right - left) // self.scale), -(-(bottom - top) // self.scale)
        region = f"{left // self.scale},{top // self.scale} {across}x{down}"
        picture = from_ppm(self.run("grim", "-t", "ppm", "-s", self.scale, "-g", region, "-", text=False))
        return picture.cut(x - left, y - top, right - x, bottom - y)

    def move_pointer(self, x, y):
        self._input.pointer(x, y)

    def click(self, x, y, button=1):
        self._input.click(x, y, button)

    def press(self, *keys):
        for key in keys:
            self._input.press(key)

    def windows(self, process=None, name=None):
        """[(number, title)] of the windows that the compositor manages; bars are none of them."""
        tree = json.loads(self.run("swaymsg", "-t", "get_tree", "-r"))
        return [(node["id"], node["name"]) for node in _window_nodes(tree)
                if process in (None, node["pid"]) and name in (None, node["name"])]

    def close_window(self, window):
        """Asks a window to close, as its user does."""
        self.run("swaymsg", f"[con_id={window[0]}] kill")

    def _start_compositor(self):
        configuration = self.write(
            self.configuration / "sway/config",
            COMPOSITOR.format(output=OUTPUT, width=self.width, height=self.height, scale=self.scale))
        self._hide_pointer()
        control = self.runtime / "sway.sock"
        self.add_variables(XDG_CURRENT_DESKTOP="sway", XDG_SESSION_TYPE="wayland", SWAYSOCK=str(control))
        compositor = self.start(
            "sway", ["sway", "-c", str(configuration)], WLR_BACKENDS="headless", WLR_RENDERER="pixman",
            WLR_LIBINPUT_NO_DEVICES="1")
        display = self.runtime / "wayland-1"
        wait_until(lambda: not compositor.running or (display.exists() and control.exists()), 20,
                   "the compositor")
        compositor.require_running()
        self.add_variables(WAYLAND_DISPLAY=display.name, GDK_BACKEND="wayland")

    def _hide_pointer(self):
        """Makes the pointer a clear pixel: pictures are of what programs draw."""
        image = struct.pack("<9I", 36, 0xFFFD0002, 24, 1, 1, 1, 0, 0, 0) + bytes(4)
        file = b"Xcur" + struct.pack("<6I", 16, 0x10000, 1, 0xFFFD0002, 24, 28) + image
        themes = self.directory / "pointers"
        for name in POINTERS:
            self.write(themes / "default/cursors" / name, file)
        self.add_variables(XCURSOR_PATH=str(themes), XCURSOR_THEME="default")

    def _start_input(self):
        path = self.runtime / "vnc"
        server = self.start("wayvnc", ["wayvnc", "--unix-socket", path])
        self._input = wait_until(lambda: _joined(path, server), 10, "the compositor's pointer")


def _joined(path, server):
    """A connection to the input server; None while it does not listen yet."""
    server.require_running()
    try:
        return VncInput(path)
    except (FileNotFoundError, ConnectionRefusedError):
        return None


def _window_nodes(node):
    if node.get("pid"):
        yield node
    for child in node.get("nodes", []) + node.get("floating_nodes", []):
        yield from _window_nodes(child)
