"""Runs tick_bench: times and allocations of one tick by itself, instructions under callgrind."""

import json

from instructions import Instructions, run

TICKS = 500


def times(program, environment):
    return json.loads(run([str(program)], environment).stdout)


def instructions(program, environment):
    """Per tick: {"unchanged": …, "changed": …}, once asked for with per_turn()."""
    return Instructions(program, environment, "*measuredTick*",
                        {loop: (loop, "{turns}") for loop in ("unchanged", "changed")}, TICKS)
