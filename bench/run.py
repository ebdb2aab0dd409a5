#!/usr/bin/env python3
"""Measures what Amperly costs, at rest, at a tick, at its start and at a frame of its panel, beside
other programs that show the battery: cbatticon, an icon as well, and i3status, which only writes a
line of text.

All programs run in one private desktop on the same made-up laptop. Only ratios carry over from one
machine to another.
"""

import argparse
import dataclasses
import json
import os
import pathlib
import platform
import statistics
import subprocess
import sys
import tempfile
import time
import types

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))

import desktop_figures as figures  # noqa: E402
import frame_figures  # noqa: E402
import panel_figures  # noqa: E402
import tick_figures  # noqa: E402
from goals import Kind, Verdict, compared, counted, table  # noqa: E402
from programs import Programs  # noqa: E402
from stage import DesktopError, Stage  # noqa: E402

from desktop.power_machine import PowerMachine  # noqa: E402

# Instructions of the program's own part of a tick: measured, with a little room to breathe.
MOST_INSTRUCTIONS_UNCHANGED = 5500
MOST_INSTRUCTIONS_CHANGED = 30000
WARMING_TICKS = 3


@dataclasses.dataclass(frozen=True)
class Extent:
    """How long to look."""

    settle_seconds: float
    pairs: int
    ticks_of_window: int
    ticks_traced: int  # a multiple of five: every fifth tick also looks for new devices
    starts: int


FULL = Extent(settle_seconds=10, pairs=5, ticks_of_window=8, ticks_traced=10, starts=5)
QUICK = Extent(settle_seconds=4, pairs=1, ticks_of_window=3, ticks_traced=5, starts=3)


def measure(build, directory, extent):
    """All raw figures."""
    programs, machine = made_up_laptop(build, directory)
    environment = {"PATH": os.environ.get("PATH", os.defpath), "LANG": "C.UTF-8", "HOME": str(directory),
                   "TMPDIR": str(directory), "XDG_RUNTIME_DIR": str(directory)}
    changes = figures.PowerChanges(machine)
    raw = {}

    say("a tick by itself")
    tick_bench = build / "bench/tick_bench"
    raw["tick"] = tick_figures.times(tick_bench, environment)
    say("a frame of the panel by itself")
    frame_bench = build / "bench/frame_bench"
    raw["frame"] = frame_figures.times(frame_bench, environment)

    # Nothing below depends on the processor's time until the start is measured.
    tick_instructions = tick_figures.instructions(tick_bench, environment)
    frame_instructions = frame_figures.instructions(frame_bench, environment, raw["frame"])
    say("memory at rest")
    flush(build / "app/amperly")
    raw["memory"] = {name: figures.memory(programs, name, extent.settle_seconds)
                     for name in ("amperly", "cbatticon")}

    with Stage() as stage:
        say("the open panel")
        raw["panel"] = panel_figures.measure(build / "bench/panel_bench", stage, extent.pairs)
        say("system calls of a tick")
        calls = raw["system_calls"] = {}
        with programs.start("amperly", stage) as running:
            time.sleep(extent.settle_seconds / 2)
            for kind, source in (("unchanged", None), ("changed", changes)):
                calls[kind] = figures.system_calls(running, directory, extent.ticks_traced, source)
        # It reads all of its files at every tick, and paints whatever they say.
        with programs.start("cbatticon", stage) as running:
            time.sleep(extent.settle_seconds / 2)
            calls["cbatticon"] = figures.system_calls(running, directory, extent.ticks_of_window)
        raw["instructions_per_tick"] = tick_instructions.per_turn()
        raw["instructions_per_frame"] = frame_instructions.per_turn()

        say("from start to icon")
        raw["start_ms"] = figures.start_times(stage, programs, ["amperly", "cbatticon"], extent.starts)

        say("processor time while nothing changes")
        with programs.start("amperly", stage) as amperly:
            with programs.start("i3status", stage) as other:
                time.sleep(extent.settle_seconds / 2)
                raw["unchanged"] = figures.activity((amperly, other), extent.pairs, extent.ticks_of_window)
            say("processor time while the text changes every 2 s")
            with programs.start("cbatticon", stage) as other:
                time.sleep(extent.settle_seconds / 2)
                # The first changes bring in code that a program at rest has given back.
                figures.watch(WARMING_TICKS, changes)
                raw["changed"] = figures.activity(
                    (amperly, other), extent.pairs, extent.ticks_of_window, changes)
    return raw


def rows_of(raw):
    """The figures that have a goal, and a few that explain them."""
    amperly, cbatticon = raw["memory"]["amperly"], raw["memory"]["cbatticon"]
    changed, unchanged = raw["changed"], raw["unchanged"]
    calls, tick = raw["system_calls"], raw["tick"]
    instructions = raw["instructions_per_tick"]

    def cpu(what, windows, other, goal):
        return compared(
            what, figures.cpu_milliseconds_per_minute(windows["amperly"]),
            figures.cpu_milliseconds_per_minute(windows[other]), other, "ms/min", goal,
            ratio=figures.median_ratio(windows["amperly"], windows[other], lambda window: window["cpu_ns"]))

    def switches(what, windows, other, goal):
        return counted(what, figures.switches_per_tick(windows["amperly"]), "", goal, Kind.TIME,
                       figures.switches_per_tick(windows[other]), other)

    def traced(what, kind, goal):
        return counted(what, calls[kind]["per_tick"], "", goal,
                       other=calls["cbatticon"]["per_tick"], other_name="cbatticon")

    def timed(what, kind, goal):
        return compared(what, tick[kind]["tick_ns"] / 1000, tick[kind]["six_preads_ns"] / 1000, "six preads",
                        "µs", goal, ratio=tick[kind]["ratio"])

    starts = raw["start_ms"]
    return [
        compared("private dirty at rest", amperly["private_dirty_kb"], cbatticon["private_dirty_kb"],
                 "cbatticon", "KB", 0.55, Kind.MEMORY),
        compared("PSS at rest, alone", amperly["pss_kb"], cbatticon["pss_kb"], "cbatticon", "KB", 0.5,
                 Kind.MEMORY),
        cpu("CPU, text changing every 2 s", changed, "cbatticon", 0.4),
        cpu("CPU, nothing changing", unchanged, "i3status", 1.0),
        switches("voluntary switches per tick, unchanged", unchanged, "i3status", 1.2),
        switches("voluntary switches per tick, changed", changed, "cbatticon", 2.5),
        traced("system calls per tick, unchanged", "unchanged", 12),
        traced("system calls per tick, changed", "changed", 20),
        compared("start to icon", statistics.median(starts["amperly"]), statistics.median(starts["cbatticon"]),
                 "cbatticon", "ms", 0.8,
                 ratio=figures.median_ratio(starts["amperly"], starts["cbatticon"], float)),
        timed("tick, unchanged", "unchanged", 1.5),
        counted("allocations per tick, unchanged", tick["unchanged"]["allocations_per_tick"], "", 0),
        counted("instructions per tick, unchanged", instructions["unchanged"], "", MOST_INSTRUCTIONS_UNCHANGED),
        timed("tick, changed, 1x", "changed", 4),
        counted("allocations per tick, changed", tick["changed"]["allocations_per_tick"], "", 5),
        counted("instructions per tick, changed", instructions["changed"], "", MOST_INSTRUCTIONS_CHANGED),
        timed("tick, changed, squares as in XFCE", "changed_tiles", None),
        timed("tick, changed, 1x and 2x for wide panels", "changed_wide", None),
        counted("wake-ups per minute, unchanged", figures.switches_per_tick(unchanged["amperly"]) * 30, "",
                other=figures.switches_per_tick(unchanged["i3status"]) * 30, other_name="i3status"),
        *frame_figures.rows(raw["frame"], raw["instructions_per_frame"]),
        *panel_figures.rows(raw["panel"]),
    ]


def remarks(raw, rows):
    """What a reader of the table should know besides."""
    lines = []
    added = ", ".join(f"{name} {figure['added_per_tick']:.1f}" for name, figure in raw["system_calls"].items())
    lines.append(f"System calls per tick that only the library with the made-up files adds, not counted: {added}.")
    for kind, other in (("unchanged", "i3status"), ("changed", "cbatticon")):
        ratios = sorted(one["cpu_ns"] / two["cpu_ns"]
                        for one, two in zip(raw[kind]["amperly"], raw[kind][other]))
        lines.append(f"CPU ratios of the {len(ratios)} pairs of windows, {kind}: "
                     + ", ".join(f"{ratio:.2f}" for ratio in ratios) + ".")
    slack = raw["memory"]["amperly"]["timer_slack_ns"]
    if slack is not None:
        lines.append(f"At rest the kernel may shift Amperly's ticks by {slack / 1e9:.2f} s.")
    for name, figure in raw["memory"].items():
        if figure["others_that_map_its_toolkit"]:
            lines.append(f"{figure['others_that_map_its_toolkit']} other processes of this machine map "
                         f"{name}'s toolkit and make its PSS look smaller; go by private dirty.")
    close = [row.what for row in rows if row.verdict is Verdict.CLOSE]
    missed = [row.what for row in rows if row.verdict is Verdict.MISSED]
    if close:
        lines.append("Over the goal, within what times vary: " + "; ".join(close) + ".")
    if missed:
        lines.append("Goals that are not met: " + "; ".join(missed) + ".")
    elif not close:
        lines.append("All goals are met.")
    return lines


def made_up_laptop(build, directory):
    machine = PowerMachine(types.SimpleNamespace(directory=directory))
    machine.add_adapter()
    machine.add_battery()
    return Programs(build / "app/amperly", machine, directory), machine


def flush(path):
    """Writes a fresh build to the disk: until then its pages would count as dirty ones."""
    with open(path, "rb") as file:
        os.fsync(file.fileno())


def about_machine():
    model = next((line.partition(":")[2].strip() for line in pathlib.Path("/proc/cpuinfo").read_text()
                  .splitlines() if line.startswith("model name")), platform.machine())
    versions = {}
    for package in ("cbatticon", "i3status", "xfce4-panel", "libqt6core6", "strace", "valgrind", "umockdev"):
        asked = subprocess.run(["dpkg-query", "-W", "-f=${Version}", package], check=False,
                               capture_output=True, text=True)
        versions[package] = asked.stdout if asked.returncode == 0 else None
    return {"processor": model, "cores": os.cpu_count(), "kernel": platform.release(),
            "load_average": os.getloadavg(), "versions": versions}


def say(what):
    print(f"bench: {what}", file=sys.stderr, flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", type=pathlib.Path, default=pathlib.Path("build/bench"),
                        help="where app/amperly and the programs of bench/ were built")
    parser.add_argument("--output", type=pathlib.Path, default=pathlib.Path("build/bench.json"))
    parser.add_argument("--quick", action="store_true", help="look less long; times vary more")
    parser.add_argument("--gate", action="store_true",
                        help="fail where a count (instructions, allocations, system calls) misses its goal")
    arguments = parser.parse_args()

    machine = about_machine()
    began = time.monotonic()
    try:
        with tempfile.TemporaryDirectory(prefix="amperly-bench-") as directory:
            raw = measure(arguments.build.resolve(), pathlib.Path(directory),
                          QUICK if arguments.quick else FULL)
    except DesktopError as error:
        print(f"bench: {error}", file=sys.stderr)
        return 1
    rows = rows_of(raw)
    notes = remarks(raw, rows)
    arguments.output.parent.mkdir(parents=True, exist_ok=True)
    arguments.output.write_text(json.dumps({
        "machine": machine, "seconds": round(time.monotonic() - began, 1), "quick": arguments.quick,
        "rows": [row.as_json() for row in rows], "raw": raw}, indent=1) + "\n")
    print(table(rows))
    print("\n" + "\n".join(notes))
    gated = [row for row in rows if row.kind is Kind.COUNT and row.verdict is Verdict.MISSED]
    return 1 if arguments.gate and gated else 0


if __name__ == "__main__":
    sys.exit(main())
