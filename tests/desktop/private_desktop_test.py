"""The private desktops themselves: what they start ends with them, and pictures tell the truth."""

import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import textwrap
import unittest

import support  # noqa: F401 (finds the desktop package)

from desktop.picture import Picture, from_ppm
from desktop.session import Session
from desktop.status_item import has_watcher
from desktop.waiting import DesktopError, wait_until
from desktop.xfce_panel import XfcePanel

BLACK, WHITE = b"\0\0\0", b"\xff\xff\xff"

# A run with a bus, and on it a service that the bus and not the run has started.
RUN = """
    import sys, time
    sys.path[:0] = {path!r}
    from desktop.session import Session
    with Session() as session:
        session.bus.call("org.xfce.Xfconf", "/org/xfce/Xfconf", "org.freedesktop.DBus.Peer", "Ping")
        print(session.directory, session.environment()["HOME"], flush=True)
        time.sleep(60)
"""


def processes_of(directory):
    """The processes of a run, by the home folder in their environment."""
    needle = f"HOME={directory}/home".encode()
    found = []
    for entry in pathlib.Path("/proc").iterdir():
        try:
            if entry.name.isdigit() and needle in (entry / "environ").read_bytes().split(b"\0"):
                found.append(entry.name)
        except OSError:
            continue
    return found


class EndOfRun(unittest.TestCase):
    def start_run(self):
        run = subprocess.Popen([sys.executable, "-c", textwrap.dedent(RUN.format(path=sys.path[:3]))],
                               stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.addCleanup(run.stdout.close)
        self.addCleanup(run.wait)
        self.addCleanup(run.kill)
        directory = run.stdout.readline().split()[0]
        self.assertGreaterEqual(len(processes_of(directory)), 2)
        return run, directory

    def test_nothing_is_left_of_a_run_that_was_interrupted(self):
        run, directory = self.start_run()
        run.send_signal(signal.SIGINT)
        run.wait(10)
        self.assertEqual(processes_of(directory), [])
        self.assertFalse(os.path.exists(directory))

    def test_nothing_is_left_of_a_run_that_was_killed(self):
        run, directory = self.start_run()
        run.kill()
        wait_until(lambda: not processes_of(directory), 10, "the run's programs to end")
        wait_until(lambda: not os.path.exists(directory), 10, "the run's folder to go")

    def test_nothing_is_left_of_a_run_that_ended(self):
        with Session() as session:
            program = session.start("sleeper", ["sleep", "60"])
            directory = session.directory
        self.assertFalse(program.running)
        self.assertEqual(processes_of(directory), [])
        self.assertFalse(directory.exists())

    def test_programs_of_two_runs_are_told_apart(self):
        with Session() as first, Session() as second:
            survivor = second.start("sleeper", ["sleep", "60"])
            first.keeper.end_all()
            self.assertTrue(survivor.running)

    def test_nothing_of_the_callers_session_is_handed_on(self):
        os.environ["AMPERLY_SECRET"] = "1"
        self.addCleanup(os.environ.pop, "AMPERLY_SECRET")
        with Session() as session:
            variables = session.run("env").split("\n")
        names = {line.partition("=")[0] for line in variables}
        self.assertNotIn("AMPERLY_SECRET", names)
        self.assertNotIn("DISPLAY", names)

    def test_missing_program_is_named(self):
        with Session() as session, self.assertRaisesRegex(DesktopError, "no-such-program is not installed"):
            session.start("missing", ["no-such-program"])

    def test_program_that_ends_early_says_why(self):
        with Session() as session:
            program = session.start("complainer", ["sh", "-c", "echo no luck today; exit 3"])
            self.assertEqual(program.wait(), 3)
            with self.assertRaisesRegex(DesktopError, "status 3: no luck today"):
                program.require_running()


class Pictures(unittest.TestCase):
    picture = Picture(4, 3, BLACK * 5 + WHITE * 2 + BLACK * 5)

    def test_ink_is_bounded_tightly(self):
        self.assertEqual(self.picture.ink((0, 0, 0)), (1, 1, 3, 2))

    def test_plain_picture_has_no_ink(self):
        self.assertIsNone(Picture(2, 2, BLACK * 4).ink())

    def test_groups_are_told_apart_by_their_gap(self):
        picture = Picture(5, 1, WHITE + BLACK + WHITE + BLACK * 2)
        self.assertEqual(picture.ink_groups(gap=1, background=(0, 0, 0)), [(0, 1), (2, 3)])
        self.assertEqual(picture.ink_groups(gap=2, background=(0, 0, 0)), [(0, 3)])

    def test_changed_area_is_bounded_tightly(self):
        self.assertEqual(self.picture.changed_area(Picture(4, 3, BLACK * 12)), (1, 1, 3, 2))
        self.assertIsNone(self.picture.changed_area(self.picture))

    def test_cut_takes_the_rectangle_and_leaves_off_what_lies_outside(self):
        self.assertEqual(self.picture.cut(1, 1, 2, 1), Picture(2, 1, WHITE * 2))
        self.assertEqual(self.picture.cut(3, 2, 9, 9).width, 1)

    def test_enlarged_repeats_each_pixel(self):
        self.assertEqual(self.picture.cut(0, 1, 2, 1).enlarged(2), Picture(4, 2, (BLACK * 2 + WHITE * 2) * 2))

    def test_portable_pixmap_that_starts_with_white_space_bytes_is_read(self):
        self.assertEqual(from_ppm(b"P6\n1 1\n255\n\n\n\n"), Picture(1, 1, b"\n\n\n"))

    def test_saved_picture_is_a_png(self):
        with tempfile.TemporaryDirectory() as folder:
            saved = self.picture.save(pathlib.Path(folder) / "new" / "picture.png")
            self.assertTrue(saved.read_bytes().startswith(b"\x89PNG\r\n\x1a\n"))


class Panels(unittest.TestCase):
    def test_panel_takes_items_as_soon_as_it_is_there(self):
        with XfcePanel() as desktop:
            self.assertTrue(has_watcher(desktop.bus))
            self.assertIsNone(desktop.status_area_ink())


if __name__ == "__main__":
    unittest.main(verbosity=2)
