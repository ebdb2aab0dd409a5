"""Runs tick_bench: times and allocations of one tick by itself, instructions under callgrind."""

import concurrent.futures
import json
import pathlib
import re
import subprocess
import tempfile

from stage import DesktopError

TICKS = 500  # and twice as many; what differs between the two is what ticks alone cost
MEASURED = "*measuredTick*"


def times(program, environment):
    done = _run([str(program)], environment)
    return json.loads(done.stdout)


class Instructions:
    """Counts in the background: what else the machine does makes no difference to a count."""

    def __init__(self, program, environment):
        self._program = str(program)
        self._environment = environment
        self._pool = concurrent.futures.ThreadPoolExecutor(1)
        self._counts = {loop: [self._pool.submit(self._count, loop, ticks) for ticks in (TICKS, 2 * TICKS)]
                        for loop in ("unchanged", "changed")}

    def per_tick(self):
        """{"unchanged": …, "changed": …}"""
        result = {}
        for loop, (once, twice) in self._counts.items():
            result[loop] = (twice.result() - once.result()) / TICKS
        self._pool.shutdown()
        return result

    def _count(self, loop, ticks):
        with tempfile.TemporaryDirectory() as directory:
            done = _run(["valgrind", "--tool=callgrind", f"--toggle-collect={MEASURED}",
                         f"--callgrind-out-file={pathlib.Path(directory) / 'out'}",
                         self._program, loop, str(ticks)], self._environment)
        # The child that looks fonts up reports as well; it runs no ticks.
        collected = [int(count) for count in re.findall(r"Collected\s*:\s*(\d+)", done.stderr)]
        if not any(collected):
            raise DesktopError("callgrind did not see any tick")
        return max(collected)


def _run(command, environment):
    try:
        return subprocess.run(command, env=environment, check=True, capture_output=True, text=True,
                              stdin=subprocess.DEVNULL)
    except FileNotFoundError as error:
        raise DesktopError(f"{command[0]} is not installed") from error
    except subprocess.CalledProcessError as error:
        reason = (error.stderr or "").strip().splitlines()
        raise DesktopError(f"{command[0]} failed: {reason[-1] if reason else error.returncode}") from error
