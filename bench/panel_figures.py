"""Runs panel_bench on the stage's display, at two pixels a point: what the open panel costs beside a
window that only fills itself, and what is left of it after closing."""

import json
import statistics
import subprocess

from goals import Kind, compared, counted
from stage import DesktopError

OPENINGS = 10
WINDOW_SECONDS = 2
LONGEST_SECONDS = 300


def measure(program, stage, pairs):
    return {"frames": _run(program, stage, "frames", pairs), "openings": _run(program, stage, "openings", OPENINGS)}


def _run(program, stage, what, count):
    environment = {**stage.environment, "QT_SCALE_FACTOR": "2"}
    try:
        done = subprocess.run([str(program), what, str(count)], env=environment, check=True,
                              capture_output=True, text=True, stdin=subprocess.DEVNULL, timeout=LONGEST_SECONDS)
    except subprocess.CalledProcessError as error:
        reason = (error.stderr or "").strip().splitlines()
        raise DesktopError(f"panel_bench failed: {reason[-1] if reason else error.returncode}") from error
    except subprocess.TimeoutExpired as error:
        raise DesktopError("panel_bench did not come to an end") from error
    return json.loads(done.stdout)


def rows(raw):
    panel, yardstick = raw["frames"]["panel"], raw["frames"]["yardstick"]
    closed, at_rest = raw["frames"]["closed"], raw["frames"]["at_rest"]
    open_kb, closed_kb = raw["openings"]["open_kb"], raw["openings"]["closed_kb"]
    ratio = statistics.median(per_frame(one) / per_frame(other) for one, other in zip(panel, yardstick))
    return [
        compared("open panel's CPU per frame, 2x", median(panel), median(yardstick), "filled window", "ms", 4,
                 ratio=ratio),
        compared("open panel's CPU, 2x, 60 Hz", share(panel), share(yardstick), "filled window", "% of a core"),
        counted("panel frames per second at 60 Hz",
                statistics.median(window["frames"] / WINDOW_SECONDS for window in panel), "", kind=Kind.TIME),
        counted("frames while the panel is hidden", closed["frames"], "", 0),
        counted("wake-ups in the second after closing, beyond any other's",
                max(0, closed["wake_ups"] - at_rest["wake_ups"]), "", 0, Kind.TIME),
        compared("private dirty, panel open, after ten openings", open_kb[-1], open_kb[0], "first opening", "KB",
                 1.1, Kind.MEMORY),
        compared("private dirty, panel closed, after ten openings", closed_kb[-2], closed_kb[0], "first closing",
                 "KB", 1.1, Kind.MEMORY),
    ]


def share(windows):
    return statistics.median(window["cpu_ms"] / 10 / WINDOW_SECONDS for window in windows)


def per_frame(window):
    return window["cpu_ms"] / window["frames"]


def median(windows):
    return statistics.median(per_frame(window) for window in windows)
