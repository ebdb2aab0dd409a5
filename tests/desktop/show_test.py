"""What `./dev run` and `./dev demo` do where there is no display."""

import os
import pathlib
import subprocess
import tempfile
import unittest

SHOW = pathlib.Path(__file__).resolve().parents[2] / "tools/desktop/show.py"
PICTURES = ["menu.png", "panel.png", "settings.png", "status-item.png"]


class Show(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory())) / "new"

    def show(self, program, *options):
        return subprocess.run(
            ["/usr/bin/python3", SHOW, "--program", program, "--output", self.folder, *options],
            env={"PATH": os.environ["PATH"]}, stdin=subprocess.DEVNULL, capture_output=True, text=True,
            timeout=120, check=False)

    def test_four_pictures_of_the_simulated_laptop_are_left_and_named(self):
        for panel in ("xfce", "waybar"):
            with self.subTest(panel=panel):
                done = self.show(os.environ["AMPERLY_DEMO_PROGRAM"], "--panel", panel)
                self.assertEqual(done.stderr, "")
                self.assertEqual(done.returncode, 0)
                self.assertEqual(sorted(file.name for file in self.folder.iterdir()), PICTURES)
                self.assertEqual(sorted(done.stdout.split()),
                                 [str(self.folder / name) for name in PICTURES])

    def test_program_that_ends_at_once_is_a_failure_in_one_line(self):
        done = self.show("/bin/false")
        self.assertEqual(done.returncode, 1)
        self.assertEqual(
            done.stderr, "show: no picture of the status item: false ended with status 1: it said nothing\n")

    def test_program_that_is_not_there_is_a_failure_in_one_line(self):
        done = self.show("/no/such/program")
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr, "show: there is no program /no/such/program\n")

    def test_pictures_that_can_not_be_written_are_a_failure_in_one_line(self):
        self.folder.write_text("a file where the folder should be")
        done = self.show(os.environ["AMPERLY_DEMO_PROGRAM"])
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr.count("\n"), 1)
        self.assertIn(str(self.folder), done.stderr)


if __name__ == "__main__":
    unittest.main(verbosity=2)
