"""Counts system calls with strace, and tells whose they are.

The programs see made-up power files through a preloaded library, which makes calls of its own:
it blocks signals, and looks whether it has been disabled. strace's stack traces tell those from
the calls that the library hands on for the program.
"""

import collections
import os
import pathlib
import re
import signal
import subprocess

from stage import DesktopError, wait_until

CALL = re.compile(r"^\d+ +(\w+)\(")
FRAME = re.compile(r"^ > (\S*?)\((\w*)")
PRELOADED = "libumockdev-preload"


class Trace:
    """strace, looking on while a program runs."""

    def __init__(self, running, directory):
        self._log = pathlib.Path(directory) / f"{running.name}.strace"
        self._log.unlink(missing_ok=True)
        environment = {"PATH": os.environ.get("PATH", os.defpath), "LC_ALL": "C"}
        try:
            self._strace = subprocess.Popen(
                ["strace", "-f", "-k", "-o", str(self._log), "-p", str(running.pid)], env=environment,
                stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
        except FileNotFoundError as error:
            raise DesktopError("strace is not installed") from error
        first = self._strace.stderr.readline()
        if "attached" not in first:
            raise DesktopError(f"strace can't look at {running.name}: {first.strip()}")

    def finish(self):
        """Ends the look and returns (the program's calls, the preloaded library's), each by name."""
        self._strace.send_signal(signal.SIGINT)
        self._strace.communicate()
        return counted(self._log.read_text(errors="replace").splitlines())


def counted(lines):
    own, added = collections.Counter(), collections.Counter()
    call, frames = None, []

    def settle():
        if call is not None:
            (added if _is_of_preload(frames) else own)[call] += 1

    for line in lines:
        frame = FRAME.match(line)
        if frame:
            frames.append((frame[1], frame[2]))
            continue
        start = CALL.match(line)
        # What was under way when the look began is an earlier moment's call, taken up again.
        if start and start[1] != "restart_syscall" and "resuming interrupted" not in line:
            settle()
            call, frames = start[1], []
        elif start:
            settle()
            call, frames = None, []
    settle()
    return own, added


def _is_of_preload(frames):
    """Whether the library made the call by itself. What it hands on, it calls by the name by which
    it was called: pread() from its pread()."""
    names = [name for _, name in frames]
    for index, (library, name) in enumerate(frames):
        if PRELOADED in library:
            below = names[index - 1] if index else ""
            return _plain(below) != _plain(name)
        if "libc.so" not in library and "libpthread" not in library:
            return False
    return False


def _plain(name):
    """A function's name without what the C library puts around it."""
    return re.sub(r"(64|_2|_time64)$", "", name.strip("_").removeprefix("libc_"))
