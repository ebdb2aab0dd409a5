"""Starting programs so that none outlives the run.

Every program gets an environment of its own with a mark in it that no other run has. Programs
start others in turn (a bus starts services, a panel starts its plug-ins), and those inherit the
mark. Ending a run ends the programs in the reverse order of their start, then whatever still
carries the mark. A guard process does the same when the run itself is killed: it notices that
the pipe to the run has closed.
"""

import contextlib
import os
import pathlib
import shutil
import signal
import subprocess
import time
import uuid

from .waiting import DesktopError, wait_until

MARK = "AMPERLY_PRIVATE_DESKTOP"
ENDING_SECONDS = 3.0


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
        self._guard, self._lifeline = _start_guard(self._mark, run_directory)

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
        _end_marked(self._mark)
        if self._lifeline is not None:
            os.write(self._lifeline, b".")
            os.close(self._lifeline)
            os.waitpid(self._guard, 0)
            self._lifeline = None


def _start_guard(mark, run_directory):
    """Forks the process that cleans up when this one dies without doing so itself."""
    reading, writing = os.pipe()
    guard = os.fork()
    if guard:
        os.close(reading)
        return guard, writing
    try:
        os.setsid()  # Ctrl-C in the terminal is for the run, not for its guard
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            signal.signal(number, signal.SIG_IGN)
        null = os.open(os.devnull, os.O_RDWR)
        for standard in range(3):  # a reader of our output must not wait for the guard
            os.dup2(null, standard)
        os.closerange(3, reading)
        os.closerange(reading + 1, 256)  # other guards' pipes among them
        if not os.read(reading, 1):  # the run is gone, and has not said that it is done
            _end_marked(mark)
            shutil.rmtree(run_directory, ignore_errors=True)
    finally:
        os._exit(0)


def _end_marked(mark):
    """Ends all processes whose environment carries the mark: they are ours, whoever's child they
    have become."""
    needle = f"{MARK}={mark}".encode()
    deadline = time.monotonic() + ENDING_SECONDS
    number = signal.SIGTERM
    while True:
        handles = _open_marked(needle)
        if not handles:
            return
        for handle in handles:
            with contextlib.suppress(ProcessLookupError):
                signal.pidfd_send_signal(handle, number)
            os.close(handle)
        if time.monotonic() > deadline:
            number = signal.SIGKILL
        time.sleep(0.01)


def _open_marked(needle):
    """Handles of the marked processes. A handle, unlike a number, can't come to mean another."""
    handles = []
    for entry in os.listdir("/proc"):
        if not entry.isdigit() or int(entry) == os.getpid():
            continue
        try:
            handle = os.pidfd_open(int(entry))
        except OSError:
            continue
        if _has_in_environment(entry, needle):
            handles.append(handle)
        else:
            os.close(handle)
    return handles


def _has_in_environment(process, needle):
    try:
        state = pathlib.Path(f"/proc/{process}/stat").read_text().rpartition(")")[2].split()[0]
        environment = pathlib.Path(f"/proc/{process}/environ").read_bytes()
    except OSError:  # gone, or another user's
        return False
    return state != "Z" and needle in environment.split(b"\0")


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
