#!/usr/bin/env python3
"""Holds our reading against a second opinion: the desktop's own power daemon over the same mock.

    compare.py READING_PROGRAM FIXTURE...

Each fixture is a device description for umockdev-run. Percentage, external power and direction
of the battery's flow must agree; where the daemon is known to say something else, ALLOWED says
what and why. Wattages are not compared: the daemon's are unsigned and use the design voltage.
"""

import os
import re
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

DAEMONS = ["/usr/libexec/upowerd", "/usr/lib/upower/upowerd", "/usr/lib/upowerd"]
BUS_CONFIGURATION = """<busconfig>
  <type>system</type>
  <listen>unix:path={socket}</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow user="*"/><allow own="*"/>
    <allow send_destination="*"/><allow receive_sender="*"/>
  </policy>
</busconfig>
"""

# (fixture, figure): (theirs, ours, why both are right)
ALLOWED = {
    ("full_on_battery", "state"): (
        "fully-charged", "unknown",
        "The gauge is stale just after unplugging. The daemon repeats its word; we have no rate to show."),
    ("desktop_socket", "percentage"): (
        0, None, "Without batteries the daemon's display device shows 0 %; we show none."),
    ("not_charging", "state"): (
        "pending-charge", "idle", "The daemon names why nothing flows; we show that nothing does."),
    ("unknown_idle", "state"): (
        "fully-charged", "idle", "The status says neither; the daemon guesses full, we see that nothing flows."),
    ("full_at_97", "state"): ("fully-charged", "idle", "Two words for one thing."),
}


class Process:
    """A program in a process group of its own, which ends with the scope."""

    def __init__(self, command, environment):
        self.process = subprocess.Popen(
            command, env=environment, start_new_session=True, stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for end in (signal.SIGTERM, signal.SIGKILL):
            try:
                os.killpg(self.process.pid, end)
                self.process.wait(timeout=5)
                return
            except subprocess.TimeoutExpired:
                continue
            except ProcessLookupError:
                self.process.wait()
                return


def run(command, environment):
    return subprocess.run(command, env=environment, capture_output=True, text=True, timeout=30, check=False)


def wait_for(what, test):
    end = time.monotonic() + 20
    while time.monotonic() < end:
        result = test()
        if result:
            return result
        time.sleep(0.1)
    sys.exit(f"{what} did not come up")


def ask_daemon(fixture, folder):
    """Figures of the daemon: percentage, external, state."""
    socket = folder / "bus"
    configuration = folder / "bus.conf"
    configuration.write_text(BUS_CONFIGURATION.format(socket=socket))
    environment = dict(os.environ, DBUS_SYSTEM_BUS_ADDRESS=f"unix:path={socket}", LC_ALL="C",
                       UPOWER_HISTORY_DIR=str(folder))
    daemon = next(path for path in DAEMONS if os.path.exists(path))
    with Process(["dbus-daemon", f"--config-file={configuration}", "--nofork"], environment):
        wait_for("The bus", socket.exists)
        with Process(["umockdev-run", "-d", str(fixture), "--", daemon], environment):
            def dump():
                answer = run(["upower", "-d"], environment)
                return answer.stdout if answer.returncode == 0 and "Daemon:" in answer.stdout else ""
            return daemon_figures(wait_for("The daemon", dump))


def daemon_figures(dump):
    display = dump[dump.index("DisplayDevice"):]
    percentage = re.search(r"percentage: +([\d.]+)%", display)
    state = re.search(r"state: +(\S+)", display)
    # The daemon's own "on-battery" follows the batteries' status, so the sockets are asked first.
    sockets = re.findall(r"online: +(\S+)", dump)
    on_battery = re.search(r"on-battery: +(\S+)", dump)
    return {
        "percentage": round(float(percentage.group(1))) if percentage else None,
        "external": "yes" in sockets if sockets else on_battery.group(1) == "no",
        "state": state.group(1) if state else "unknown",
    }


def ask_ours(program, fixture):
    answer = run(["umockdev-run", "-d", str(fixture), "--", program], dict(os.environ))
    if answer.returncode != 0:
        sys.exit(f"{fixture.stem}: no reading: {answer.stdout}{answer.stderr}")
    battery = re.search(r"^battery (\S+)", answer.stdout, re.M).group(1)
    charge = re.search(r"^charge (\S+)", answer.stdout, re.M).group(1)
    if battery == "unknown":
        state = "unknown"
    elif float(battery) == 0:
        state = "idle"
    else:
        state = "charging" if float(battery) > 0 else "discharging"
    return {
        "percentage": None if charge == "unknown" else int(charge),
        "external": "external power connected" in answer.stdout,
        "state": state,
    }


def agrees(figure, theirs, ours):
    if figure == "percentage" and None not in (theirs, ours):
        return abs(theirs - ours) <= 1
    return theirs == ours


def compare(program, fixture):
    with tempfile.TemporaryDirectory() as folder:
        theirs = ask_daemon(fixture, Path(folder))
    ours = ask_ours(program, fixture)
    failures = 0
    for figure in theirs:
        allowed = ALLOWED.get((fixture.stem, figure))
        if allowed and (theirs[figure], ours[figure]) == allowed[:2]:
            verdict = "differs: " + allowed[2]
        elif agrees(figure, theirs[figure], ours[figure]):
            verdict = "agrees"
        else:
            verdict = "DISAGREES"
            failures += 1
        print(f"{fixture.stem:28} {figure:11} daemon {theirs[figure]!s:14} ours {ours[figure]!s:12} {verdict}")
    return failures


def main():
    program, *fixtures = sys.argv[1:]
    if not fixtures:
        sys.exit("Name at least one fixture.")
    failures = sum(compare(program, Path(fixture)) for fixture in fixtures)
    sys.exit(1 if failures else 0)


main()
