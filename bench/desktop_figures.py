"""Measures the programs in a real status area: memory, processor time, wake-ups, system calls and
the time until the icon shows. Every figure comes with its raw numbers."""

import statistics
import time

from process_figures import (
    cpu_nanoseconds, memory_kilobytes, sharers_of, timer_slack_nanoseconds, voluntary_switches)
from programs import INTERVAL_SECONDS
from stage import Stage, wait_until
from system_calls import Trace

ICON_SECONDS = 20
PAUSE_BEFORE_CHANGE_SECONDS = 0.05


class PowerChanges:
    """Gives the battery another power every tick, in steps that no text rounds away."""

    def __init__(self, machine):
        self._machine = machine
        self._turn = 0

    def next(self):
        self._turn += 1
        self._machine.change("BAT0", power_now=10_000_000 + self._turn * 37 % 89 * 1_000_000)


def watch(ticks, changes=None):
    """Lets so many ticks pass, each after a change of the battery's power if `changes` are given."""
    start = time.monotonic()
    for tick in range(ticks):
        if changes:
            _sleep_until(start + tick * INTERVAL_SECONDS + PAUSE_BEFORE_CHANGE_SECONDS)
            changes.next()
        _sleep_until(start + (tick + 1) * INTERVAL_SECONDS)


def memory(programs, name, settle_seconds):
    """PSS and private dirty of a program that nobody shares libraries with: the desktop goes first,
    and the program, stopped, does not notice."""
    with Stage() as stage:
        running = programs.start(name, stage)
        try:
            _wait_for_icon(stage, running)
            time.sleep(settle_seconds)
            running.require_running()
            running.pause()
            with_panel = memory_kilobytes(running.pid)
            slack = timer_slack_nanoseconds(running.pid)
            stage.end()
            alone = memory_kilobytes(running.pid)
            library = "libQt6Gui" if name == "amperly" else "libgtk-3"
            sharers = sharers_of(library, running.pid)
        finally:
            running.kill()
    return {"pss_kb": alone[0], "private_dirty_kb": alone[1], "pss_beside_the_panel_kb": with_panel[0],
            "timer_slack_ns": slack, "others_that_map_its_toolkit": sharers}


def start_times(stage, programs, names, pairs):
    """{name: [milliseconds from exec() to the icon on the screen]}, turn by turn; the first turn, when
    files may come from the disk, does not count."""
    result = {name: [] for name in names}
    for pair in range(pairs + 1):
        for name in names if pair % 2 else reversed(names):
            stage.wait_until_empty()
            with programs.start(name, stage) as running:
                shown = _wait_for_icon(stage, running)
                if pair:
                    result[name].append((shown - running.started) * 1000)
                time.sleep(0.3)
    stage.wait_until_empty()
    return result


def activity(pair, pairs, ticks, changes=None):
    """{name: [{cpu_ns, switches} of so many ticks]}, turn by turn. The one whose turn it is not is
    stopped: each runs as if it were alone."""
    result = {running.name: [] for running in pair}
    for running in pair:
        running.pause()
    for _ in range(pairs):
        for running in pair:
            running.resume()
            time.sleep(0.2)  # for the tick that has been due meanwhile
            running.wait_until_between_ticks()
            before = cpu_nanoseconds(running.pid), voluntary_switches(running.pid)
            watch(ticks, changes)
            after = cpu_nanoseconds(running.pid), voluntary_switches(running.pid)
            running.pause()
            result[running.name].append({
                "ticks": ticks, "cpu_ns": after[0] - before[0], "voluntary_switches": after[1] - before[1]})
    for running in pair:
        running.resume()
    return result


def system_calls(running, directory, ticks, changes=None):
    """System calls of so many ticks: the program's, and those that the preloaded library adds."""
    running.wait_until_between_ticks()
    trace = Trace(running, directory)
    watch(ticks, changes)
    own, added = trace.finish()
    return {"ticks": ticks, "calls": dict(own), "added_by_preload": dict(added),
            "per_tick": own.total() / ticks, "added_per_tick": added.total() / ticks}


def cpu_milliseconds_per_minute(windows):
    return statistics.median(
        window["cpu_ns"] / 1e6 / (window["ticks"] * INTERVAL_SECONDS) * 60 for window in windows)


def switches_per_tick(windows):
    return sum(window["voluntary_switches"] for window in windows) / sum(window["ticks"] for window in windows)


def median_ratio(one, other, figure):
    """The median of the ratios of pairs."""
    return statistics.median(figure(a) / figure(b) for a, b in zip(one, other))


def _wait_for_icon(stage, running):
    def shown():
        running.require_running()
        return stage.shows_icon() and time.monotonic()
    return wait_until(shown, ICON_SECONDS, f"{running.name}'s icon")


def _sleep_until(moment):
    time.sleep(max(0.0, moment - time.monotonic()))
