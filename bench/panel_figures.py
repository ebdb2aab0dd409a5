"""Runs panel_bench on the stage's display, at two pixels a point: what the open panel costs beside a
window that only fills itself, and what is left of it after closing."""

import json
import statistics
import subprocess

from goals import Kind, compared, counted
from stage import DesktopError

OPENINGS = 10
LONGEST_SECONDS = 300


def measure(program, stage, pairs):
    environment = {**stage.environment, "QT_SCALE_FACTOR": "2"}
    try:
        done = subprocess.run([str(program), str(pairs), str(OPENINGS)], env=environment, check=True,
                              capture_output=True, text=True, stdin=subprocess.DEVNULL, timeout=LONGEST_SECONDS)
    except subprocess.CalledProcessError as error:
        reason = (error.stderr or "").strip().splitlines()
        raise DesktopError(f"panel_bench failed: {reason[-1] if reason else error.returncode}") from error
    except subprocess.TimeoutExpired as error:
        raise DesktopError("panel_bench did not come to an end") from error
    return json.loads(done.stdout)


def rows(raw):
    panel, yardstick, dirty = raw["panel"], raw["yardstick"], raw["private_dirty_kb"]
    ratio = statistics.median(per_frame(one) / per_frame(other) for one, other in zip(panel, yardstick))
    return [
        compared("open panel's CPU per frame, 2x", median(panel), median(yardstick), "filled window", "ms", 4,
                 ratio=ratio),
        counted("panel frames per second at 60 Hz", statistics.median(window["frames"] / 2 for window in panel),
                "", kind=Kind.TIME),
        counted("frames while the panel is hidden", raw["closed"]["frames"], "", 0),
        # A window's end takes a few round trips to the display.
        counted("wake-ups in the second after closing", raw["closed"]["wake_ups"], "", 5, Kind.TIME),
        compared("private dirty after ten openings", dirty["closed_again"], dirty["first_open"],
                 "first opening", "KB", 1.1, Kind.MEMORY),
        compared("private dirty, panel open, eleventh time", dirty["last_open"], dirty["first_open"],
                 "first opening", "KB", kind=Kind.MEMORY),
    ]


def per_frame(window):
    return window["cpu_ms"] / window["frames"]


def median(windows):
    return statistics.median(per_frame(window) for window in windows)
