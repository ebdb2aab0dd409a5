"""Runs frame_bench: times, allocations, instructions and likeness of one frame of the panel."""

import json

from goals import Kind, compared, counted
from instructions import Instructions, run

FRAMES = 140  # one whole spacing of the pulses

# Instructions of a frame: measured, with a little room to breathe.
MOST_INSTRUCTIONS = {"2x, AVX2": 3_500_000, "2x, SSE2": 6_000_000}


def times(program, environment):
    return json.loads(run([str(program)], environment).stdout)


def instructions(program, environment, figures):
    """Per frame, once asked for with per_turn(): by the kernels that `figures`, from times(), names."""
    names = dict.fromkeys((figures["fastest"], figures["plain"]))
    return Instructions(program, environment, "*measuredFrame*",
                        {f"{scale}x, {name}": ("changing", "{turns}", name, str(scale))
                         for scale in (1, 2) for name in names}, FRAMES)


def rows(figures, instructions_per_frame):
    """The figures of times() as rows of the table."""
    fastest, plain = figures["fastest"], figures["plain"]

    def framed(what, kind, goal=None):
        figure = figures[kind]
        return compared(f"panel frame, {what}", figure["frame_ns"] / 1000, figure["blend_ns"] / 1000,
                        "Qt's blend", "µs", goal, ratio=figure["ratio"])

    def toolkit(scale, goal=None):
        figure = figures[f"{scale}_toolkit"]
        return compared(f"panel frame, {scale}, {fastest}", figure["frame_ns"] / 1000,
                        figure["toolkit_ns"] / 1000, "QPainter and its blur", "µs", goal, ratio=figure["ratio"])

    goal = 6 if fastest == "AVX2" else 9
    most_allocations = max(figure["allocations_per_frame"] for figure in figures.values()
                           if isinstance(figure, dict) and "allocations_per_frame" in figure)
    return [
        framed(f"1x, {fastest}", "1x"),
        framed(f"2x, {fastest}", "2x", goal),
        framed(f"2x, {fastest}, widths change", "2x_widths_change", goal),
        framed(f"2x, {plain}", "2x_plain", 9),
        framed(f"2x, {plain}, widths change", "2x_widths_change_plain", 9),
        toolkit("1x"),
        toolkit("2x", 1 / 80),
        counted("allocations per panel frame, the most", most_allocations, "", 0),
        *(counted(f"instructions per panel frame, {what}", count, "", MOST_INSTRUCTIONS.get(what))
          for what, count in instructions_per_frame.items()),
        counted("picture against true Gaussians, worst channel, mean", figures["difference"]["mean"], "of 255", 1.2,
                Kind.COUNT),
        counted("picture against true Gaussians, worst channel, 99.9 %", figures["difference"]["permille"], "of 255",
                50, Kind.COUNT),
    ]
