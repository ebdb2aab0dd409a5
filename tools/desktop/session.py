"""A user's session without the user: a home folder, a runtime folder and a session bus."""

import os
import pathlib
import shutil
import subprocess
import tempfile

from .bus import Bus
from .processes import Keeper, child_environment
from .waiting import DesktopError

NOBODY = 65534
TOOL_SECONDS = 20

# The distribution's own configuration would do, but for one thing: it admits one user only, and
# where a compositor refuses to run as root, the one who watches is not the one who is watched.
BUS_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <keep_umask/>
  <listen>unix:path={socket}</listen>
  <auth>EXTERNAL</auth>
  <standard_session_servicedirs/>
  <policy context="default">
    <allow user="*"/>
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""


class Session:
    """Use it as a context: leaving ends every program and removes every folder."""

    def __init__(self, user=None):
        """`user` is the numeric id that the programs run as; None is the caller's own."""
        self.user = user
        self.directory = self._make_directory()
        self.home = self._folder("home")
        self.configuration = self._folder("home/.config")
        self.runtime = self._folder("run")
        self.keeper = Keeper(self._folder("logs"), self.directory)
        self._variables = {
            "HOME": str(self.home),
            "XDG_CONFIG_HOME": str(self.configuration),
            "XDG_CACHE_HOME": str(self._folder("home/.cache")),
            "XDG_DATA_HOME": str(self._folder("home/.local/share")),
            "XDG_RUNTIME_DIR": str(self.runtime),
            "TMPDIR": str(self._folder("tmp")),
        }
        self.bus = None
        self.bus_address = None

    def __enter__(self):
        try:
            self._start_bus()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        if self.bus is not None:
            self.bus.close()
            self.bus = None
        self.keeper.end_all()
        shutil.rmtree(self.directory, ignore_errors=True)

    def environment(self, **more):
        """All that a program of this session is given."""
        return child_environment(self._variables, **more)

    def add_variables(self, **variables):
        """Adds to what every program started from now on is given."""
        self._variables.update(variables)

    def start(self, name, command, pass_fds=(), **more):
        return self.keeper.start(
            name, [str(part) for part in command], self.environment(**more), self.user, pass_fds)

    def run(self, *command, accepted=(0,), text=True, **more):
        """Runs a tool that ends by itself and returns what it printed."""
        identity = {} if self.user is None else {
            "user": self.user, "group": self.user, "extra_groups": []}
        try:
            done = subprocess.run(
                [str(part) for part in command], env=self.environment(**more), check=False,
                stdin=subprocess.DEVNULL, capture_output=True, timeout=TOOL_SECONDS, **identity)
        except FileNotFoundError as error:
            raise DesktopError(f"{command[0]} is not installed") from error
        except subprocess.TimeoutExpired as error:
            raise DesktopError(f"{command[0]} did not end within {TOOL_SECONDS} s") from error
        if done.returncode not in accepted:
            reason = done.stderr.decode(errors="replace").strip().splitlines()
            raise DesktopError(f"{command[0]} failed: {reason[-1] if reason else done.returncode}")
        return done.stdout.decode(errors="replace") if text else done.stdout

    def write(self, path, contents):
        """Writes a file of the session's user, by rename, making its folder; returns the path."""
        path = pathlib.Path(path)
        self._make_folders(path.parent)
        part = path.with_name(path.name + ".part")
        part.write_bytes(contents if isinstance(contents, bytes) else contents.encode())
        self.give(part)
        part.rename(path)
        return path

    def give(self, path):
        """Makes a file or folder the session user's own."""
        if self.user is not None:
            os.chown(path, self.user, self.user)

    def reachable(self, program):
        """The program's path, or that of a copy where the session's user can't come to it."""
        program = pathlib.Path(program).resolve()
        if not os.access(program, os.X_OK):
            raise DesktopError(f"there is no program {program}")
        if self.user is None or _open_to_all(program):
            return program
        copy = self.directory / program.name
        if not copy.exists():
            shutil.copy2(program, copy)
            copy.chmod(0o755)
        return copy

    def _start_bus(self):
        configuration = self.write(
            self.directory / "bus.conf", BUS_CONFIGURATION.format(socket=self.runtime / "bus"))
        reading, writing = os.pipe()
        daemon = self.start(
            "dbus-daemon", ["dbus-daemon", "--nofork", "--nopidfile", f"--config-file={configuration}",
                            f"--print-address={writing}"], pass_fds=(writing,))
        os.close(writing)
        with os.fdopen(reading) as answer:
            self.bus_address = answer.readline().strip()  # comes once it listens; empty if it ends
        if not self.bus_address:
            daemon.wait()
            daemon.require_running()
        self.add_variables(DBUS_SESSION_BUS_ADDRESS=self.bus_address)
        self.bus = Bus(self.bus_address)

    def _make_directory(self):
        # A socket's path has room for 108 bytes, which a long TMPDIR would use up.
        parent = tempfile.gettempdir()
        directory = pathlib.Path(
            tempfile.mkdtemp(prefix="amperly-", dir=parent if len(parent) < 40 else "/tmp"))
        directory.chmod(0o700)
        self.give(directory)
        return directory

    def _folder(self, name):
        return self._make_folders(self.directory / name)

    def _make_folders(self, folder):
        if not folder.exists():
            self._make_folders(folder.parent)
            # Complete before it is seen: whoever watches for it must be let in at once.
            part = folder.with_name(folder.name + ".part")
            part.mkdir(mode=0o700)
            self.give(part)
            part.rename(folder)
        return folder


def _open_to_all(program):
    """Whether every user may run `program`, all folders above it included."""
    return all(part.stat().st_mode & 0o001 for part in (program, *program.parents))
