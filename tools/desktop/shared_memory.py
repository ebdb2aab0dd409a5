"""Shared memory where a container has none.

A compositor and its clients hand each other pictures in files of /dev/shm. Some containers and
change-roots lack it, or keep it from everyone but root.
"""

import ctypes
import os
import subprocess

from .waiting import DesktopError

CLONE_NEWNS = 0x00020000

# A /dev of our own with the few devices that programs open, seen by this run alone.
OWN_DEVICES = """
set -e
mount --make-rprivate /
devices=$(mktemp -d)
trap 'rmdir "$devices" 2>/dev/null' EXIT
mount -t tmpfs -o mode=755 amperly "$devices"
for name in null zero full random urandom tty; do
    [ -e /dev/$name ] || continue
    : > "$devices/$name"
    mount --bind /dev/$name "$devices/$name"
done
ln -s /proc/self/fd "$devices/fd"
mkdir -m 1777 "$devices/shm"
mount --move "$devices" /dev
"""


def ensure_shared_memory():
    """Makes sure that every user of this run can share memory, the system left as it is."""
    if _works():
        return
    if os.geteuid() != 0:
        raise DesktopError("/dev/shm is missing or can't be written; a compositor needs it")
    library = ctypes.CDLL(None, use_errno=True)
    if library.unshare(CLONE_NEWNS) != 0:
        reason = os.strerror(ctypes.get_errno())
        raise DesktopError(f"/dev/shm is missing, and a mount of our own is refused: {reason}")
    done = subprocess.run(["sh", "-c", OWN_DEVICES], stdin=subprocess.DEVNULL, capture_output=True,
                          text=True, check=False)
    if done.returncode != 0:
        raise DesktopError(f"/dev/shm is missing, and a mount of our own failed: {done.stderr.strip()}")


def _works():
    try:
        return bool(os.stat("/dev/shm").st_mode & 0o002) and os.statvfs("/dev/shm").f_bavail > 0
    except OSError:
        return False
