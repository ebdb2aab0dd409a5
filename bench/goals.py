"""What was measured, beside what it should be: the table for people and the judgement for machines."""

import dataclasses
import enum

WALL_SLACK = 1.15  # what a ratio of times may be over its goal before it counts as missed


class Kind(enum.Enum):
    TIME = "time"  # differs from run to run
    COUNT = "count"  # the same in every run, on every machine: good for a gate
    MEMORY = "memory"
    NOTE = "note"  # has no goal


class Verdict(enum.Enum):
    MET = "yes"
    CLOSE = "close"
    MISSED = "NO"
    NONE = ""


@dataclasses.dataclass(frozen=True)
class Row:
    """One measurement. `value` is what the goal speaks of: a ratio, or a plain count."""

    what: str
    amperly: float
    unit: str
    value: float
    kind: Kind
    goal: float = None
    other: float = None
    other_name: str = ""

    @property
    def verdict(self):
        if self.goal is None:
            return Verdict.NONE
        if self.value <= self.goal:
            return Verdict.MET
        if self.kind is Kind.TIME and self.value <= self.goal * WALL_SLACK:
            return Verdict.CLOSE
        return Verdict.MISSED

    def as_json(self):
        return {"what": self.what, "amperly": self.amperly, "other": self.other, "other_name": self.other_name,
                "unit": self.unit, "value": self.value, "goal": self.goal, "kind": self.kind.value,
                "verdict": self.verdict.name.lower()}


def compared(what, amperly, other, other_name, unit, goal=None, kind=Kind.TIME, ratio=None):
    """A row of a ratio. `ratio` is the median of pairs where that differs from the ratio of medians."""
    return Row(what, amperly, unit, amperly / other if ratio is None else ratio,
               kind if goal is not None else Kind.NOTE, goal, other, other_name)


def counted(what, amperly, unit, goal=None, kind=Kind.COUNT, other=None, other_name=""):
    """A row whose goal speaks of Amperly's figure alone."""
    return Row(what, amperly, unit, amperly, kind if goal is not None else Kind.NOTE, goal, other, other_name)


def table(rows):
    """The rows as text."""
    cells = [("", "Amperly", "other", "ratio", "goal", "met?")]
    for row in rows:
        ratio = ""
        if row.other:
            # Where the goal is about Amperly alone, the ratio is there to compare by eye.
            is_ratio = row.value != row.amperly
            ratio = number(row.value if is_ratio else row.amperly / row.other)
        cells.append((
            row.what, f"{number(row.amperly)} {row.unit}".strip(),
            "" if row.other is None else f"{number(row.other)} {row.other_name}",
            ratio, "" if row.goal is None else f"≤ {number(row.goal)}", row.verdict.value))
    widths = [max(len(line[column]) for line in cells) for column in range(len(cells[0]))]
    lines = []
    for index, line in enumerate(cells):
        padded = [cell.ljust(width) if column in (0, 5) else cell.rjust(width)
                  for column, (cell, width) in enumerate(zip(line, widths))]
        lines.append("  ".join(padded).rstrip())
        if index == 0:
            lines.append("-" * len(lines[0]))
    return "\n".join(lines)


def number(value):
    if value == 0:
        return "0"
    if abs(value) >= 1000:
        return f"{value:.0f}"
    return f"{value:.3g}"
