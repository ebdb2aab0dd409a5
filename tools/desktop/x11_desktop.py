"""A virtual X screen with a window manager, a pointer and a keyboard."""

import contextlib
import ctypes
import dataclasses
import os
import re
import secrets
import struct

from .picture import FrameBuffer
from .session import Session
from .waiting import DesktopError, wait_until

WIDTH, HEIGHT = 1200, 900  # logical pixels; room for the settings window and a panel

BACKGROUND = 0x4A5A78

# A window's number, its size and its place on the screen, as xwininfo lists them.
WINDOW_LINE = re.compile(r"^ +(0x[0-9a-f]+) .*?  (\d+)x(\d+)\+-?\d+\+-?\d+  \+(-?\d+)\+(-?\d+)$", re.M)


@dataclasses.dataclass(frozen=True)
class Window:
    """A window that can be seen; place and size are in pixels."""

    number: int
    x: int
    y: int
    width: int
    height: int

    def contains(self, x, y):
        return self.x <= x < self.x + self.width and self.y <= y < self.y + self.height


class X11Desktop(Session):
    """`scale` is the pixels per logical pixel that toolkits are told of."""

    def __init__(self, scale=1):
        super().__init__()
        self.scale = scale
        self._frame_buffer = None

    def __enter__(self):
        super().__enter__()
        try:
            self._start_display()
            self._paint_background()
            self._start_window_manager()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *details):
        super().__exit__(*details)
        if self._frame_buffer is not None:
            self._frame_buffer.close()
            self._frame_buffer = None

    def screenshot(self, x=0, y=0, width=None, height=None):
        return self._frame_buffer.picture(x, y, width, height)

    @property
    def width(self):
        return self._frame_buffer.width

    @property
    def height(self):
        return self._frame_buffer.height

    def move_pointer(self, x, y):
        self.run("xdotool", "mousemove", x, y)

    def click(self, x, y, button=1):
        self.run("xdotool", "mousemove", x, y, "click", button)

    def press(self, *keys):
        """Presses and releases keys, by their X names."""
        self.run("xdotool", "key", *keys)

    def windows(self, process=None, name=None):
        """The windows that can be seen, of one process or with one title."""
        selection = ["--pid", process] if process is not None else []
        selection += ["--name", f"^{re.escape(name)}$"] if name is not None else []
        found = self.run("xdotool", "search", "--all", "--onlyvisible", *(selection or ["--name", ".*"]),
                         accepted=(0, 1))
        places = self._places()
        return [places[number] for number in map(int, found.split()) if number in places]

    def close_window(self, window):
        """Asks a window to close, as its user does."""
        # Active is what the window manager calls it; keys arrive from when it has the focus.
        self.run("xdotool", "windowactivate", "--sync", window.number,
                 "windowfocus", "--sync", window.number, "key", "alt+F4")

    def _places(self):
        """Every window by its number, seen or not."""
        tree = self.run("xwininfo", "-root", "-tree")
        windows = {}
        for number, width, height, x, y in WINDOW_LINE.findall(tree):
            windows[int(number, 16)] = Window(
                int(number, 16), int(x), int(y), int(width), int(height))
        return windows

    def _start_display(self):
        authority = self.directory / "authority"
        authority.write_bytes(_authority(secrets.token_bytes(16)))
        authority.chmod(0o600)
        reading, writing = os.pipe()
        # No pointer is drawn: pictures are of what programs draw.
        server = self.start("xvfb", [
            "Xvfb", "-displayfd", writing, "-screen", "0",
            f"{WIDTH * self.scale}x{HEIGHT * self.scale}x24", "-dpi", "96", "-auth", authority,
            "-nolisten", "tcp", "-nocursor", "-noreset", "-fbdir", self.runtime], pass_fds=(writing,))
        os.close(writing)
        with os.fdopen(reading) as answer:
            number = answer.readline().strip()  # ends, empty, when the server does
        if not number:
            server.wait()
            raise DesktopError(f"the virtual screen did not start: {server.last_line()}")
        self._frame_buffer = FrameBuffer(self.runtime / "Xvfb_screen0")
        self.add_variables(DISPLAY=f":{number}", XAUTHORITY=str(authority), GDK_BACKEND="x11",
                           XDG_SESSION_TYPE="x11")
        if self.scale != 1:
            # What a desktop leaves behind when its user has asked for twice the size: the resource
            # that most toolkits go by, and for GTK its own number, which then counts letters twice.
            self.run("xprop", "-root", "-format", "RESOURCE_MANAGER", "8s", "-set", "RESOURCE_MANAGER",
                     f"Xft.dpi:\t{96 * self.scale}\n")
            self.add_variables(GDK_SCALE=str(self.scale), GDK_DPI_SCALE=str(1 / self.scale))

    def _paint_background(self):
        """Gives the empty desktop a colour, so that pictures show where a window ends."""
        library = ctypes.CDLL("libX11.so.6")
        library.XOpenDisplay.restype = library.XDefaultRootWindow.restype = ctypes.c_void_p
        with _environment(self.environment()):
            display = ctypes.c_void_p(library.XOpenDisplay(None))
        if not display:
            raise DesktopError("the virtual screen can't be reached")
        root = ctypes.c_ulong(library.XDefaultRootWindow(display))
        library.XSetWindowBackground(display, root, ctypes.c_ulong(BACKGROUND))
        library.XClearWindow(display, root)
        library.XCloseDisplay(display)

    def _start_window_manager(self):
        manager = self.start("openbox", ["openbox"])
        wait_until(lambda: not manager.running or "window id" in self.run(
            "xprop", "-root", "_NET_SUPPORTING_WM_CHECK"), 10, "the window manager")
        manager.require_running()


@contextlib.contextmanager
def _environment(variables):
    """The process's own environment for as long as a library looks at it."""
    before = {name: os.environ.get(name) for name in ("DISPLAY", "XAUTHORITY")}
    os.environ.update({name: variables[name] for name in before})
    try:
        yield
    finally:
        for name, value in before.items():
            if value is None:
                del os.environ[name]
            else:
                os.environ[name] = value


def _authority(cookie):
    """The file that lets in who may use the display: one entry for any host and number."""
    name = b"MIT-MAGIC-COOKIE-1"
    any_host = struct.pack(">HHH", 0xFFFF, 0, 0)
    return any_host + struct.pack(">H", len(name)) + name + struct.pack(">H", len(cookie)) + cookie
