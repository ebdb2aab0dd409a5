"""What the kernel tells of a running process."""

import pathlib
import re


def threads(pid):
    return [int(entry.name) for entry in pathlib.Path(f"/proc/{pid}/task").iterdir()]


def cpu_nanoseconds(pid):
    """Time on a processor, of all threads. The clock behind it counts nanoseconds, where the one
    behind `utime` counts ticks of 4 ms."""
    return sum(int(_read(f"/proc/{pid}/task/{thread}/schedstat").split()[0]) for thread in threads(pid))


def voluntary_switches(pid):
    """How often its threads went to sleep by themselves: once for each time they woke up."""
    return sum(int(re.search(r"^voluntary_ctxt_switches:\s+(\d+)",
                             _read(f"/proc/{pid}/task/{thread}/status"), re.M)[1])
               for thread in threads(pid))


def memory_kilobytes(pid):
    """(PSS, private dirty)."""
    rollup = _read(f"/proc/{pid}/smaps_rollup")
    return tuple(int(re.search(rf"^{name}:\s+(\d+)", rollup, re.M)[1]) for name in ("Pss", "Private_Dirty"))


def timer_slack_nanoseconds(pid):
    """None where only the process itself may know."""
    try:
        return int(_read(f"/proc/{pid}/timerslack_ns"))
    except OSError:
        return None


def sharers_of(library, but):
    """How many other processes map a library, as far as it can be seen."""
    count = 0
    for entry in pathlib.Path("/proc").iterdir():
        if not entry.name.isdigit() or int(entry.name) == but:
            continue
        try:
            count += library in (entry / "maps").read_text()
        except OSError:  # gone, or another user's
            continue
    return count


def _read(path):
    return pathlib.Path(path).read_text()
