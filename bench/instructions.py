"""Instructions of one turn of a loop, counted under callgrind: what else the machine does makes no
difference to them."""

import concurrent.futures
import pathlib
import re
import subprocess
import tempfile

from stage import DesktopError


class Instructions:
    """Counts in the background. `loops` are the arguments that select a loop, under a name each; the
    number of turns is put at `{turns}` in them. Only what `measured` names is counted."""

    def __init__(self, program, environment, measured, loops, turns):
        self._program = str(program)
        self._environment = environment
        self._measured = measured
        self._turns = turns
        self._pool = concurrent.futures.ThreadPoolExecutor(1)
        # So many turns and twice as many: what differs between the two is what turns alone cost.
        self._counts = {name: [self._pool.submit(self._count, arguments, count) for count in (turns, 2 * turns)]
                        for name, arguments in loops.items()}

    def per_turn(self):
        """{name: instructions}"""
        result = {name: (twice.result() - once.result()) / self._turns
                  for name, (once, twice) in self._counts.items()}
        self._pool.shutdown()
        return result

    def _count(self, arguments, turns):
        with tempfile.TemporaryDirectory() as directory:
            done = run(["valgrind", "--tool=callgrind", f"--toggle-collect={self._measured}",
                        f"--callgrind-out-file={pathlib.Path(directory) / 'out'}", self._program,
                        *(argument.format(turns=turns) for argument in arguments)], self._environment)
        # Children, such as the one that looks fonts up, report as well; they run no turns.
        collected = [int(count) for count in re.findall(r"Collected\s*:\s*(\d+)", done.stderr)]
        if not any(collected):
            raise DesktopError("callgrind did not see any turn")
        return max(collected)


def run(command, environment):
    try:
        return subprocess.run(command, env=environment, check=True, capture_output=True, text=True,
                              stdin=subprocess.DEVNULL)
    except FileNotFoundError as error:
        raise DesktopError(f"{command[0]} is not installed") from error
    except subprocess.CalledProcessError as error:
        reason = (error.stderr or "").strip().splitlines()
        raise DesktopError(f"{command[0]} failed: {reason[-1] if reason else error.returncode}") from error
