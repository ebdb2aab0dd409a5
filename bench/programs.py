"""The programs that are measured, started and stopped by hand."""

import ctypes
import pathlib
import signal
import subprocess
import time

from process_figures import voluntary_switches
from stage import DesktopError, wait_until

INTERVAL_SECONDS = 2

I3STATUS_CONFIGURATION = f"""general {{
    interval = {INTERVAL_SECONDS}
    colors = false
    output_format = "none"
}}
order += "battery 0"
battery 0 {{
    format = "%status %percentage %consumption"
    path = "/sys/class/power_supply/BAT%d/uevent"
}}
"""

# A tick may come late by a quarter of the interval, so that the machine can wake once for several
# programs. So long after a tick was seen, no tick is near.
LATEST_TICK_SECONDS = INTERVAL_SECONDS / 4
QUIET_SECONDS = LATEST_TICK_SECONDS + 0.2

PR_SET_PDEATHSIG = 1
_prctl = ctypes.CDLL(None).prctl


class Running:
    """A program that was started and ends with the run."""

    def __init__(self, name, command, environment, log_directory):
        self.name = name
        self.log = pathlib.Path(log_directory) / f"{name}.log"
        with open(self.log, "wb") as output:
            try:
                self._popen = subprocess.Popen(
                    command, env=environment, cwd=environment.get("HOME"), stdin=subprocess.DEVNULL,
                    stdout=output, stderr=subprocess.STDOUT, start_new_session=True,
                    preexec_fn=_die_with_the_run)
            except FileNotFoundError as error:
                raise DesktopError(f"{command[0]} is not installed") from error
        self.started = time.monotonic()  # Popen returns once the program has taken over the process

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.end()

    @property
    def pid(self):
        return self._popen.pid

    def require_running(self):
        if self._popen.poll() is not None:
            lines = self.log.read_text(errors="replace").strip().splitlines()
            raise DesktopError(f"{self.name} ended: {lines[-1] if lines else 'it said nothing'}")

    def pause(self):
        self._popen.send_signal(signal.SIGSTOP)

    def resume(self):
        self._popen.send_signal(signal.SIGCONT)

    def end(self):
        if self._popen.poll() is None:
            self._popen.terminate()
            self.resume()
            try:
                self._popen.wait(3)
            except subprocess.TimeoutExpired:
                self._popen.kill()
                self._popen.wait()

    def kill(self):
        """Ends it without giving it a say, whatever state it is in."""
        self._popen.kill()
        self._popen.wait()

    def wait_until_between_ticks(self):
        """Returns when a tick has passed and the next is a while off."""
        before = voluntary_switches(self.pid)

        def ticked():
            self.require_running()
            return voluntary_switches(self.pid) != before
        wait_until(ticked, 3 * INTERVAL_SECONDS, f"{self.name} to wake up")
        time.sleep(QUIET_SECONDS)


class Programs:
    """Starts the programs on a made-up machine, each reading its power files every two seconds."""

    def __init__(self, amperly, machine, directory):
        self._machine = machine
        self._directory = pathlib.Path(directory)
        i3status = self._directory / "i3status.conf"
        i3status.write_text(I3STATUS_CONFIGURATION)
        self._commands = {
            "amperly": [str(amperly)],
            "cbatticon": ["cbatticon", "-u", str(INTERVAL_SECONDS)],
            "i3status": ["i3status", "-c", str(i3status)],
        }

    def start(self, name, stage):
        # The library that shows them the made-up files costs each of them the same.
        environment = {**stage.environment, **self._machine.variables()}
        return Running(name, self._commands[name], environment, self._directory)


def _die_with_the_run():
    _prctl(PR_SET_PDEATHSIG, signal.SIGKILL)
