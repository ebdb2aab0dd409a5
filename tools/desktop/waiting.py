"""Waiting for what is going to be true, with a deadline and a reason when it does not happen."""

import time

FIRST_PAUSE_SECONDS = 0.005
LONGEST_PAUSE_SECONDS = 0.05


class DesktopError(Exception):
    """Something that was needed did not happen; the message is one line for a person."""


def wait_until(predicate, timeout, what):
    """Returns the first true value of `predicate`; raises a DesktopError after `timeout` seconds.

    `what` completes the sentence "waited in vain for …". It may be a function, asked at the end,
    so that the message can tell what was there instead.
    """
    deadline = time.monotonic() + timeout
    pause = FIRST_PAUSE_SECONDS
    while True:
        value = predicate()
        if value:
            return value
        if time.monotonic() >= deadline:
            detail = what() if callable(what) else what
            raise DesktopError(f"waited {timeout:g} s in vain for {detail}")
        time.sleep(pause)
        pause = min(pause * 1.5, LONGEST_PAUSE_SECONDS)


def wait_until_steady(read, timeout, what, steady_seconds=0.15):
    """Returns what `read` gives once it has given the same for `steady_seconds`."""
    deadline = time.monotonic() + timeout
    last = read()
    since = time.monotonic()
    while time.monotonic() - since < steady_seconds:
        if time.monotonic() >= deadline:
            raise DesktopError(f"waited {timeout:g} s in vain for {what} to come to rest")
        time.sleep(FIRST_PAUSE_SECONDS * 2)
        now = read()
        if now != last:
            last, since = now, time.monotonic()
    return last
