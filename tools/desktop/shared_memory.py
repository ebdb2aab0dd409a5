"""Shared memory where a container has none.

A compositor and its clients hand each other pictures in files of /dev/shm. Some containers and
change-roots lack it, or keep it from everyone but root.
"""

import ctypes
import os
import subprocess
import sys

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
    """Makes sure that every user of this run can share memory."""
    if _works():
        return
    if os.geteuid() != 0:
        raise DesktopError("/dev/shm is missing or can't be written; a compositor needs it")
    if not _mount_own():
        _make_usual()


def _mount_own():
    """Covers /dev for this run alone. Not possible without the right to mount, nor in a plain
    change-root, whose mounts would show outside of it."""
    if ctypes.CDLL(None).unshare(CLONE_NEWNS) != 0:
        return False
    return subprocess.run(["sh", "-c", OWN_DEVICES], stdin=subprocess.DEVNULL, capture_output=True,
                          check=False).returncode == 0


def _make_usual():
    """Makes the folder what it is everywhere else."""
    print("There is no /dev/shm for all users here: making it.", file=sys.stderr)
    try:
        os.makedirs("/dev/shm", exist_ok=True)
        os.chmod("/dev/shm", 0o1777)
    except OSError as error:
        raise DesktopError(f"/dev/shm, which a compositor needs: {error.strerror}") from error


def _works():
    try:
        return bool(os.stat("/dev/shm").st_mode & 0o002) and os.statvfs("/dev/shm").f_bavail > 0
    except OSError:
        return False
