"""A private desktop in a process of its own.

The process that measures must not load the libraries that the measured programs use, or it would
share their pages; and the desktop has to be able to go while a program stays.
"""

import dataclasses
import multiprocessing
import os
import pathlib
import signal
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "tools"))

from desktop.picture import FrameBuffer  # noqa: E402
from desktop.waiting import DesktopError, wait_until  # noqa: E402


@dataclasses.dataclass(frozen=True)
class Surroundings:
    """What the desktop's process tells about itself."""

    environment: dict
    directory: str
    frame_buffer: str
    panel_colour: tuple
    panel_height: int


class Stage:
    """XFCE's panel on a virtual screen; its status area takes icons of both kinds."""

    def __init__(self):
        here, there = multiprocessing.Pipe()
        context = multiprocessing.get_context("fork")
        self._process = context.Process(target=_serve, args=(there, here))
        self._process.start()
        there.close()
        self._pipe = here
        answer = self._pipe.recv()
        if isinstance(answer, str):
            self._process.join()
            raise DesktopError(answer)
        self.surroundings = answer
        self._frame_buffer = FrameBuffer(answer.frame_buffer)
        self._empty_panel = self._panel_picture()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.end()

    def end(self):
        if self._process.is_alive():
            self._pipe.close()
            self._process.join()
        self._frame_buffer.close()

    @property
    def environment(self):
        return self.surroundings.environment

    def shows_icon(self):
        """Whether something is painted in the status area. Cheap while nothing is."""
        picture = self._panel_picture()
        return picture != self._empty_panel and picture.ink(self.surroundings.panel_colour) is not None

    def wait_until_empty(self):
        wait_until(lambda: not self.shows_icon(), 10, "the status area to become empty")
        self._empty_panel = self._panel_picture()

    def _panel_picture(self):
        return self._frame_buffer.picture(0, 0, None, self.surroundings.panel_height)


def _serve(pipe, other_end):
    """The desktop's process: lives until the pipe's other end closes."""
    other_end.close()
    signal.signal(signal.SIGINT, signal.SIG_IGN)  # ends by its pipe
    try:
        from desktop.xfce_panel import XfcePanel
        with XfcePanel() as desktop:
            pipe.send(Surroundings(
                environment=desktop.environment(), directory=str(desktop.directory),
                frame_buffer=str(desktop.runtime / "Xvfb_screen0"), panel_colour=desktop.panel_colour,
                panel_height=desktop.panel_height * desktop.scale))
            try:
                pipe.recv()
            except EOFError:
                pass
    except DesktopError as error:
        pipe.send(str(error))
    except ImportError as error:
        pipe.send(f"{error.name} is missing")
    finally:
        sys.stdout.flush()
        os._exit(0)
