"""Preferences and their window: opened from outside, edited from outside."""

import unittest

from support import DesktopTest, InWaybar, InXfce, write_preferences


class Settings(DesktopTest):
    def test_second_start_opens_the_window_of_the_first_and_ends_well(self):
        self.on_battery()
        self.start()
        second = self.amperly.start_again()
        self.assertEqual(second.wait(), 0)
        self.eventually(self.amperly.settings_windows, "the first one's settings window")
        self.assertTrue(self.amperly.program.running)
        self.assertEqual(len(self.amperly.settings_windows()), 1)

    def test_third_start_shows_the_same_window(self):
        self.test_second_start_opens_the_window_of_the_first_and_ends_well()
        self.assertEqual(self.amperly.start_again().wait(), 0)
        self.assertEqual(len(self.amperly.settings_windows()), 1)

    def test_closed_window_opens_again(self):
        self.on_battery()
        self.start()
        self.amperly.start_again().wait()
        self.eventually(self.amperly.settings_windows, "the settings window")
        self.amperly.close_settings()
        self.assertTrue(self.amperly.program.running)
        self.assertEqual(self.amperly.start_again().wait(), 0)
        self.eventually(self.amperly.settings_windows, "the settings window again")

    def test_file_edited_in_place_is_followed(self):
        self.on_battery()
        self.start()
        pictures = self.pictures()
        path = self.amperly.preferences_file()
        path.write_text(path.read_text() + "macIcon=cpu\n")
        self.eventually(lambda: self.pictures() != pictures, "the item to follow the preference")

    def test_file_replaced_by_another_is_followed(self):
        self.on_battery()
        self.start()
        pictures = self.pictures()
        write_preferences(self.desktop, macIcon="cpu")
        self.eventually(lambda: self.pictures() != pictures, "the item to follow the preference")

    def test_first_file_ever_is_followed(self):
        self.on_battery()
        self.launch_as_installed()
        self.amperly.wait_until_shown()
        pictures = self.pictures()
        write_preferences(self.desktop, macIcon="cpu")
        self.eventually(lambda: self.pictures() != pictures, "the item to follow the preference")

    def test_removed_file_means_the_defaults(self):
        self.on_battery()
        self.start(macIcon="cpu")
        pictures = self.pictures()
        self.amperly.preferences_file().unlink()
        self.eventually(lambda: self.pictures() != pictures, "the item to follow the default")

    def pictures(self):
        return [item.pictures() for item in self.amperly.items()]


class SettingsInXfce(InXfce, Settings):
    pass


class SettingsInWaybar(InWaybar, Settings):
    pass


del Settings

if __name__ == "__main__":
    unittest.main(verbosity=2)
