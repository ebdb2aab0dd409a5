"""Starting programs so that none outlives the run.

Every program gets an environment of its own with a mark in it that no other run has. Programs
start others in turn (a bus starts services, a panel starts its plug-ins), and those inherit the
mark. Ending a run ends the programs in the reverse order of their start, then whatever still
carries the mark. A guard process does the same when the run itself is killed: it notices that
the pipe to the run has closed.
"""

import pathlib
import signal
import subprocess
import sys
import uuid

from .guard import ENDING_SECONDS, MARK, end_marked
from .waiting import DesktopError, wait_until


class Program:
    """One started program; its output goes to a file."""

    def __init__(self, name, popen, log):
        self.name = name
        self.log = log
        self._popen = popen

    @property
    def pid(self):
        return self._popen.pid

    @property
    def status(self):
        """The exit status; None while the program runs; negative for the signal that ended it."""
        return self._popen.poll()

    @property
    def running(self):
        return self.status is None

    def output(self):
        return pathlib.Path(self.log).read_text(errors="replace")

    def last_line(self):
        lines = self.output().strip().splitlines()
        return lines[-1] if lines else "it said nothing"

    def wait(self, timeout=5):
        """Waits for the program to end by itself and returns its exit status."""
        wait_until(lambda: not self.running, timeout, f"{self.name} to end")
        return self.status

    def require_running(self):
        if not self.running:
            raise DesktopError(f"{self.name} ended with status {self.status}: {self.last_line()}")

    def end(self, number=signal.SIGTERM, timeout=ENDING_SECONDS):
        """Asks the program to end, then makes it."""
        if not self.running:
            return
        self._popen.send_signal(number)
        try:
            self._popen.wait(timeout)
        except subprocess.TimeoutExpired:
            self._popen.kill()
            self._popen.wait()


class Keeper:
    """Starts programs and ends them, together with all that they have started."""

    def __init__(self, log_directory, run_directory):
        """The guard removes `run_directory` when the run can't."""
        self._log_directory = pathlib.Path(log_directory)
        self._mark = uuid.uuid4().hex
        self._programs = []
        self._guard = _start_guard(self._mark, run_directory)

    def start(self, name, command, environment, user=None, pass_fds=()):
        """`environment` is all that the program gets. `user` is a numeric id to run as."""
        log = self._log_directory / f"{name}-{len(self._programs)}.log"
        identity = {} if user is None else {"user": user, "group": user, "extra_groups": []}
        with open(log, "wb") as output:
            try:
                popen = subprocess.Popen(
                    command, env={**environment, MARK: self._mark}, stdin=subprocess.DEVNULL,
                    stdout=output, stderr=subprocess.STDOUT, start_new_session=True,
                    cwd=environment.get("HOME"), pass_fds=pass_fds, **identity)
            except FileNotFoundError as error:
                raise DesktopError(f"{command[0]} is not installed") from error
            except OSError as error:
                raise DesktopError(f"{command[0]} can't be started: {error.strerror}") from error
        program = Program(name, popen, log)
        self._programs.append(program)
        return program

    def end_all(self):
        """Ends every program; none is left when this returns."""
        for program in reversed(self._programs):
            program.end()
        self._programs.clear()
        end_marked(self._mark)
        if self._guard is not None:
            self._guard.communicate(b".")
            self._guard = None


def _start_guard(mark, run_directory):
    """Starts the process that cleans up when this one dies without doing so itself."""
    return subprocess.Popen(
        [sys.executable, pathlib.Path(__file__).with_name("guard.py"), mark, run_directory],
        stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True)


def child_environment(session, **more):
    """What every program of a private desktop is given, and nothing of the caller's own."""
    environment = {
        "PATH": "/usr/local/bin:/usr/bin:/bin:/usr/local/sbin:/usr/sbin:/sbin",
        "LANG": "C.UTF-8",
        "TZ": "UTC",
        "NO_AT_BRIDGE": "1",  # keeps the toolkit of panels from starting the accessibility bus
        "GSETTINGS_BACKEND": "memory",
        "GIO_USE_VFS": "local",
        "LIBGL_ALWAYS_SOFTWARE": "1",
        **session,
    }
    environment.update(more)
    return environment
