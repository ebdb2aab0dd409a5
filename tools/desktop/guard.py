"""Ends what a run has started when the run itself was killed.

Started beside each run with its mark and its folder. It reads one byte: a run that ends properly
writes it; where the pipe closes without, the run is gone, and this cleans up in its place.
"""

import contextlib
import os
import pathlib
import shutil
import signal
import sys
import time

MARK = "AMPERLY_PRIVATE_DESKTOP"
ENDING_SECONDS = 3.0


def end_marked(mark):
    """Ends all processes whose environment carries the mark: they are ours, whoever's child they
    have become."""
    needle = f"{MARK}={mark}".encode()
    deadline = time.monotonic() + ENDING_SECONDS
    number = signal.SIGTERM
    while True:
        handles = _open_marked(needle)
        if not handles:
            return
        for handle in handles:
            with contextlib.suppress(ProcessLookupError):
                signal.pidfd_send_signal(handle, number)
            os.close(handle)
        if time.monotonic() > deadline:
            number = signal.SIGKILL
        time.sleep(0.01)


def _open_marked(needle):
    """Handles of the marked processes. A handle, unlike a number, can't come to mean another."""
    handles = []
    for entry in os.listdir("/proc"):
        if not entry.isdigit() or int(entry) == os.getpid():
            continue
        try:
            handle = os.pidfd_open(int(entry))
        except OSError:
            continue
        if _has_in_environment(entry, needle):
            handles.append(handle)
        else:
            os.close(handle)
    return handles


def _has_in_environment(process, needle):
    try:
        state = pathlib.Path(f"/proc/{process}/stat").read_text().rpartition(")")[2].split()[0]
        environment = pathlib.Path(f"/proc/{process}/environ").read_bytes()
    except OSError:  # gone, or another user's
        return False
    return state != "Z" and needle in environment.split(b"\0")


def _main(mark, run_directory):
    for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        signal.signal(number, signal.SIG_IGN)  # Ctrl-C in the terminal is for the run
    if not os.read(0, 1):
        end_marked(mark)
        shutil.rmtree(run_directory, ignore_errors=True)


if __name__ == "__main__":
    _main(*sys.argv[1:])
