"""The form in the settings window, by keyboard alone and as a screen reader finds it."""

import os
import unittest

from support import DesktopTest, InWaybar, InXfce, write_preferences

from desktop import accessible
from desktop.amperly import Amperly
from desktop.power_machine import PowerMachine

WIDTH = 420
PICKERS = ["Mac power usage", "Charger input", "Battery charging / draining", "Mac icon", "Update every",
           "Click shows"]
SEGMENTS = {"Layout": ["Stacked", "Single line"], "Decimals": ["None", "One"]}
SWITCHES = ["Hide battery when idle", 'Show "W" unit', "Larger text", "Compact spacing", "Launch at login",
            "Smooth readings"]
BUTTONS = ["☕ Buy me a coffee", "Reset to Defaults"]
GROUPS = ["Preview", "Readings", "Format", "General", "Amperly"]


class Form(DesktopTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        accessible.enable(cls.desktop)

    def open(self, **preferences):
        """Starts Amperly on battery and opens its settings, which then have the keyboard."""
        self.on_battery()
        self.start(**preferences)
        self.open_window()

    def open_window(self):
        self.amperly.start_again().wait()
        self.window = self.eventually(self.amperly.settings_windows, "the settings window")[0]
        self.focus_window()
        self.eventually(lambda: any("focused" in node["states"] for node in self.nodes()), "the focus")

    def focus_window(self):
        """Gives the window the keyboard, where the desktop does not do so by itself."""

    def nodes(self):
        return list(accessible.walk(accessible.tree_of(self.desktop, self.amperly.pid)))

    def node(self, name, role=None):
        """The part called `name`, by itself or by its label."""
        for node in self.nodes():
            if node["role"] != "label" and name in (node["title"] or node["name"], node["name"]) \
                    and role in (None, node["role"]):
                return node
        self.fail(f"there is no {role or 'part'} called {name}")

    def place(self, node):
        """Left, top, right and bottom, in the window."""
        left, top, width, height = node["place"]
        window = self.nodes()[0]["place"]
        return left - window[0], top - window[1], left - window[0] + width, top - window[1] + height

    def focused(self):
        """The name of the control that has the keyboard. A segment's group has it too, and comes first. The
        toolkit since 6.8 says so of the chosen item in every picker's list, closed as it is, as well."""
        names = [node["title"] or node["name"] for node in self.nodes()
                 if "focused" in node["states"] and node["role"] != "list item"]
        return names[-1] if names else None

    def stored(self):
        lines = self.amperly.preferences_file().read_text().splitlines()
        return dict(line.split("=", 1) for line in lines if "=" in line)

    def pictures(self):
        return [item.pictures() for item in self.amperly.items()]

    def wait_until_stored(self, key, value):
        self.eventually(lambda: self.stored().get(key) == value,
                        lambda: f"{key} to be {value}; it is {self.stored().get(key)}")

    def follows(self, *keys):
        """Presses keys and waits until the status item shows another picture."""
        before = self.pictures()
        self.desktop.press(*keys)
        self.eventually(lambda: self.pictures() != before, f"the status item to follow {keys}")


class FormInXfce(InXfce, Form):
    def focus_window(self):
        self.desktop.run("xdotool", "windowactivate", "--sync", self.window.number,
                         "windowfocus", "--sync", self.window.number)


class SettingsOfAWideItem(InWaybar, Form):
    def plugged_in(self, **battery):
        self.machine = PowerMachine(self.desktop)
        self.machine.add_adapter(online=1)
        self.machine.add_battery(**battery)
        self.start(updateInterval=60)
        self.open_window()

    def test_every_setting_of_the_item_shows_in_it_at_once(self):
        self.plugged_in(status="Charging")
        for keys, key, value in [
                (("alt+m", "Down"), "macStyle", "valueOnly"),
                (("alt+m", "Up"), "macStyle", "iconAndValue"),
                (("alt+c", "Down"), "chargerStyle", "valueOnly"),
                (("alt+b", "Down"), "batteryStyle", "valueOnly"),
                (("alt+i", "Down"), "macIcon", "bolt.fill"),
                (("alt+u",), "showUnitStacked", "true"),
                (("alt+l", "Right"), "stackedLayout", "false"),
                (("alt+u",), "showUnit", "false"),
                (("alt+d", "Left"), "decimals", "0"),
                (("alt+t",), "largeText", "true"),
                (("alt+s",), "compactSpacing", "true")]:
            with self.subTest(key=key):
                self.follows(*keys)
                self.wait_until_stored(key, value)

    def test_idle_battery_leaves_at_once(self):
        self.plugged_in(status="Full", power_now=0, capacity=100)
        self.follows("alt+h")
        self.wait_until_stored("hideIdleBattery", "true")


class SettingsByLetter(FormInXfce):
    def test_every_control_is_set_and_the_status_item_follows(self):
        self.open(updateInterval=2)
        for keys, key, value in [
                (("alt+m", "Down"), "macStyle", "valueOnly"),
                (("alt+m", "Up"), "macStyle", "iconAndValue"),
                (("alt+i", "Down"), "macIcon", "bolt.fill"),
                (("alt+b", "Down"), "batteryStyle", "valueOnly")]:
            with self.subTest(key=key):
                self.follows(*keys)
                self.wait_until_stored(key, value)
        # This panel's tiles have room for a reading and no more: nothing of these shows in them.
        for keys, key, value in [
                (("alt+u",), "showUnitStacked", "true"),
                (("alt+l", "Right"), "stackedLayout", "false"),
                (("alt+u",), "showUnit", "false"),
                (("alt+d", "Left"), "decimals", "0"),
                (("alt+t",), "largeText", "true"),
                (("alt+s",), "compactSpacing", "true"),
                (("alt+c", "End"), "chargerStyle", "hidden"),
                (("alt+h",), "hideIdleBattery", "true"),
                (("alt+e", "Down"), "updateInterval", "5.0"),
                (("alt+r",), "smoothing", "true"),
                (("alt+k", "Down"), "clickShows", "menu")]:
            with self.subTest(key=key):
                self.desktop.press(*keys)
                self.wait_until_stored(key, value)

    def test_launch_at_login_writes_and_removes_the_entry(self):
        entry = self.desktop.configuration / "autostart/io.github.amperly.Amperly.desktop"
        self.open()
        self.desktop.press("alt+a")
        self.eventually(entry.exists, "the entry")
        self.assertIn(f"Exec={self.desktop.reachable(os.environ['AMPERLY_PROGRAM'])}\n", entry.read_text())
        self.assertIn("checked", self.node("Launch at login")["states"])
        self.desktop.press("alt+a")
        self.eventually(lambda: not entry.exists(), "the entry to go")

    def test_the_demo_switches_launch_at_login_for_itself_only(self):
        folder = self.desktop.configuration / "autostart"
        entry = self.desktop.write(folder / "io.github.amperly.Amperly.desktop", "[Desktop Entry]\nExec=sh\n")
        self.addCleanup(entry.unlink)
        self.amperly = Amperly(self.desktop, os.environ["AMPERLY_DEMO_PROGRAM"])
        self.amperly.wait_until_shown()
        self.open_window()
        for is_on in (True, False):
            self.desktop.press("alt+a")
            self.eventually(lambda: ("checked" in self.node("Launch at login")["states"]) == is_on,
                            f"the switch to be {'on' if is_on else 'off'}")
            self.assertEqual([file.name for file in folder.iterdir()], [entry.name])
            self.assertEqual(entry.read_text(), "[Desktop Entry]\nExec=sh\n")

    def test_reset_forgets_what_was_chosen(self):
        self.open(updateInterval=5, largeText=True, macIcon="cpu")
        self.follows("alt+f")
        self.eventually(lambda: not self.stored().keys() & {"updateInterval", "largeText", "macIcon"},
                        "the keys to go")


class SettingsByTab(FormInXfce):
    def test_tab_visits_every_control_and_keys_change_it(self):
        self.open(updateInterval=2, decimals=1)
        visited = []
        for _ in range(len(PICKERS) + len(SEGMENTS) + len(SWITCHES) + len(BUTTONS)):
            visited.append(self.focused())
            self.desktop.press("Tab")
            self.eventually(lambda: self.focused() != visited[-1], lambda: f"Tab to leave {visited[-1]}")
        self.assertEqual(visited, [
            "Mac power usage", "Charger input", "Battery charging / draining", "Mac icon",
            "Hide battery when idle", "Stacked", "One", 'Show "W" unit', "Larger text", "Compact spacing",
            "Launch at login", "Update every", "Smooth readings", "Click shows", "☕ Buy me a coffee",
            "Reset to Defaults"])
        self.assertEqual(self.focused(), visited[0], "round again")

    def test_space_toggles_and_arrows_choose(self):
        self.open(hideIdleBattery=False)
        self.desktop.press("Tab", "Tab", "Tab", "Tab", "space")
        self.wait_until_stored("hideIdleBattery", "true")
        self.desktop.press("Tab", "Right")
        self.wait_until_stored("stackedLayout", "false")
        self.desktop.press("Left")
        self.wait_until_stored("stackedLayout", "true")

    def test_list_opens_and_closes(self):
        self.open(macStyle="iconAndValue")
        self.desktop.press("space", "Down", "Down", "Return")
        self.wait_until_stored("macStyle", "iconOnly")
        self.desktop.press("space", "Down", "Escape")
        self.stays(lambda: self.stored()["macStyle"] == "iconOnly", "Escape chose something")


class SettingsReadAloud(FormInXfce):
    def test_window_and_groups_say_their_names(self):
        self.open()
        self.assertEqual(self.nodes()[0]["name"], "Amperly Settings")
        groups = [node["name"] for node in self.nodes() if node["role"] == "panel"]
        self.assertEqual([name for name in groups if name in GROUPS], GROUPS)

    def test_every_control_has_its_role_name_and_value(self):
        self.open(updateInterval=5, decimals=0)
        for name in PICKERS:
            self.assertEqual(self.node(name)["role"], "combo box", name)
        self.assertEqual(self.node("Update every")["name"], "5 seconds")
        for name in SWITCHES:
            self.assertEqual(self.node(name)["role"], "check box", name)
        for name, options in SEGMENTS.items():
            segments = self.node(name, "panel")["children"]
            self.assertEqual([(segment["role"], segment["name"]) for segment in segments],
                             [("radio button", option) for option in options])
        self.assertIn("checked", self.node("None", "radio button")["states"])
        self.assertEqual([self.node(name)["role"] for name in BUTTONS], ["link", "button"])

    def test_nothing_that_can_have_the_keyboard_is_without_a_name(self):
        self.open()
        nameless = [node["role"] for node in self.nodes()
                    if "focusable" in node["states"] and "showing" in node["states"]
                    and not (node["name"] or node["title"])]
        self.assertEqual(nameless, [])

    def test_preview_says_what_the_status_item_says(self):
        self.open()
        self.wait_for_label(self.node_of_preview()["name"])
        self.assertEqual(self.label(), "Mac using 12.3 W, Battery draining: 12.3 W (82%)")

    def test_change_of_the_file_shows_at_once(self):
        self.open(largeText=False)
        write_preferences(self.desktop, largeText=True, macIcon="cpu", decimals=2)
        self.eventually(lambda: "checked" in self.node("Larger text")["states"], "the switch to follow")
        self.assertEqual(self.node("Mac icon")["name"], "Chip")
        for name in SEGMENTS["Decimals"]:
            self.assertNotIn("checked", self.node(name, "radio button")["states"])

    def node_of_preview(self):
        return next(node for node in self.nodes() if node["role"] == "image")


class SettingsOnTheScreen(FormInXfce):
    def test_small_window_scrolls_to_where_the_keyboard_goes(self):
        self.open()
        self.desktop.run("xdotool", "windowsize", "--sync", self.window.number, WIDTH, 300)
        self.eventually(lambda: self.place(self.nodes()[0])[3] == 300, "the window to be small")
        self.assertGreater(self.place(self.node("Reset to Defaults"))[1], 300)
        self.desktop.press("shift+Tab")
        self.eventually(lambda: self.place(self.node("Reset to Defaults"))[3] <= 300, "the form to scroll")
        self.desktop.press("Tab")
        self.eventually(lambda: self.place(self.node("Mac power usage"))[1] >= 0, "the form to scroll back")

    def test_size_and_place_are_kept_while_the_program_runs(self):
        self.open()
        self.desktop.run("xdotool", "windowsize", "--sync", self.window.number, WIDTH, 500,
                         "windowmove", "--sync", self.window.number, 100, 120)
        before = self.bounds()
        self.amperly.close_settings()
        self.open_window()
        self.assertEqual(before[3], 500)
        self.assertEqual(self.bounds(), before)

    def bounds(self):
        window = self.amperly.settings_windows()[0]
        return window.x, window.y, window.width, window.height

    def test_it_is_mirrored_where_people_read_from_right_to_left(self):
        self.on_battery()
        write_preferences(self.desktop, updateInterval=2)
        self.amperly = Amperly(self.desktop, os.environ["AMPERLY_PROGRAM"], self.machine, LC_ALL="ar_EG.UTF-8")
        self.amperly.wait_until_shown()
        self.open_window()
        for name in (*PICKERS, *SWITCHES):
            self.assertLess(self.place(self.node(name))[2], WIDTH / 2 + 10, name)
        for label in (node for node in self.nodes() if node["role"] == "label" and node["name"] in SWITCHES):
            self.assertGreater(self.place(label)[2], WIDTH - 60, label["name"])
        stacked, single = self.node("Layout", "panel")["children"]
        self.assertGreater(self.place(stacked)[0], self.place(single)[0])
        self.desktop.press("alt+l", "Left")
        self.wait_until_stored("stackedLayout", "false")


if __name__ == "__main__":
    unittest.main(verbosity=2)
