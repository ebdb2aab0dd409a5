"""The status item in real panels: what it says, and that it follows the machine."""

import time
import unittest

from support import DASH, DesktopTest, InWaybar, InXfce, write_preferences

USUAL_INTERVAL_SECONDS = 2.0
TOLERANCE = 1.25  # the timer may be late by a quarter


class StatusItem(DesktopTest):
    """What holds in every panel."""

    def test_item_says_what_it_is(self):
        self.on_battery()
        self.start()
        properties = self.amperly.item().properties()
        self.assertEqual(properties["Id"], "amperly")
        self.assertEqual(properties["Title"], "Amperly")
        self.assertEqual(properties["Category"], "Hardware")
        self.assertEqual(properties["Status"], "Active")
        self.assertIs(properties["ItemIsMenu"], False)
        self.assertEqual(properties["IconName"], "")

    def test_texts_are_the_power_files_figures(self):
        self.on_battery(power_now=12300000, capacity=82)
        self.start()
        self.assertEqual(self.label(), "Mac using 12.3 W, Battery draining: 12.3 W (82%)")
        self.assertIn("Mac using 12.3 W", self.amperly.item().tool_tip())

    def test_power_is_worked_out_from_current_and_voltage(self):
        self.on_battery(power_now=None, energy_now=None, energy_full=None, energy_full_design=None,
                        current_now=1500000, voltage_now=12000000)
        self.start()
        self.assertEqual(self.label(), "Mac using 18.0 W, Battery draining: 18.0 W (82%)")

    def test_change_of_the_power_files_shows_within_two_usual_intervals(self):
        self.on_battery(power_now=12300000)
        write_preferences(self.desktop, smoothing=False)
        self.launch_as_installed()
        self.amperly.wait_until_shown()
        pictures = self.amperly.item().pictures()
        self.machine.change("BAT0", power_now=23400000)
        start = time.monotonic()
        self.wait_for_label("Mac using 23.4 W, Battery draining: 23.4 W (82%)", timeout=10)
        self.assertLess(time.monotonic() - start, 2 * USUAL_INTERVAL_SECONDS * TOLERANCE)
        self.assertNotEqual(self.amperly.item().pictures(), pictures)
        self.assertIn("Mac using 23.4 W", self.amperly.item().tool_tip())

    def test_charger_reading_comes_with_the_plug_and_goes_with_it(self):
        self.on_battery()
        self.start()
        without_charger = self.reading_count()
        self.machine.plug_in(power_now=20000000)
        self.wait_for_label(
            f"Mac using {DASH}, charger supplying {DASH}, Battery charging: 20.0 W (82%)")
        self.eventually(lambda: self.reading_count() == without_charger + 1, "the charger's reading")
        self.machine.unplug(power_now=9000000)
        self.wait_for_label("Mac using 9.0 W, Battery draining: 9.0 W (82%)")
        self.eventually(lambda: self.reading_count() == without_charger, "the charger's reading to go")

    def test_rate_that_the_battery_does_not_know_is_a_dash(self):
        self.on_battery(power_now=None)
        self.start()
        self.assertEqual(self.label(), f"Mac using {DASH}, Battery draining: {DASH} (82%)")

    def test_figure_that_gets_lost_becomes_a_dash(self):
        self.on_battery()
        self.start()
        pictures = self.amperly.item().pictures()
        self.machine.change("BAT0", power_now=None)
        self.wait_for_label(f"Mac using {DASH}, Battery draining: {DASH} (82%)")
        self.assertNotEqual(self.amperly.item().pictures(), pictures)

    def test_machine_without_power_supply_has_no_power_data(self):
        self.without_power_supply()
        self.start()
        self.assertEqual(self.label(), "Amperly: no power data")
        self.assertEqual(self.amperly.item().tool_tip(), "")
        self.assertEqual(self.reading_count(), 1)

    def test_missing_power_data_is_drawn_as_more_than_the_glyph(self):
        self.on_battery()
        self.start(macStyle="iconOnly", batteryStyle="hidden")
        glyph_alone = self.amperly.item().pictures()
        self.amperly.program.end()
        self.eventually(lambda: not self.desktop.status_area_ink(), "an empty status area")
        self.without_power_supply()
        self.start(macStyle="iconOnly", batteryStyle="hidden")
        self.assertNotEqual(self.amperly.item().pictures(), glyph_alone)

    def test_hidden_readings_leave_the_glyph(self):
        self.on_battery()
        self.start(macStyle="hidden", chargerStyle="hidden", batteryStyle="hidden")
        self.assertEqual(len(self.amperly.items()), 1)
        self.assertIsNotNone(self.desktop.status_area_ink())

    def test_item_leaves_with_the_program(self):
        self.on_battery()
        self.start()
        self.amperly.program.end()
        self.eventually(lambda: not self.desktop.status_area_ink(), "the item to leave the panel")

    def reading_count(self):
        raise NotImplementedError


class StatusItemInXfce(InXfce, StatusItem):
    """The panel squeezes wide pictures, so each reading is a square item of its own."""

    def reading_count(self):
        return len(self.amperly.items())

    def test_pictures_are_squares(self):
        self.on_battery()
        self.start()
        for item in self.amperly.items():
            for width, height in item.picture_sizes():
                self.assertEqual(width, height)

    def test_every_item_tells_the_same(self):
        self.on_battery()
        self.start()
        self.assertEqual(len(self.amperly.items()), 2)
        self.assertEqual(len({item.spoken_label() for item in self.amperly.items()}), 1)
        self.assertEqual(len({item.tool_tip() for item in self.amperly.items()}), 1)

    def test_items_stand_side_by_side(self):
        self.on_battery()
        self.start()
        self.machine.plug_in(power_now=20000000)
        self.amperly.wait_until_registered(3)
        self.eventually(lambda: len(self.desktop.settle().ink_groups(gap=3)) >= 3, "three tiles")

    def test_tile_that_comes_back_stands_where_it_stood(self):
        self.on_battery()
        self.start()
        self.amperly.wait_until_registered(2)
        both = self.desktop.settle()
        write_preferences(self.desktop, macStyle="hidden", updateInterval=60, smoothing=False)
        self.amperly.wait_until_registered(1)
        self.eventually(lambda: self.ink_width(self.desktop.settle()) < 0.75 * self.ink_width(both),
                        "the tile to leave the panel")
        write_preferences(self.desktop, updateInterval=60, smoothing=False)
        self.amperly.wait_until_registered(2)
        self.eventually(lambda: self.desktop.settle() == both, "both tiles as they were")

    def ink_width(self, picture):
        columns = picture.ink_columns(self.desktop.panel_colour)
        return columns[-1] - columns[0] + 1


class StatusItemInWaybar(InWaybar, StatusItem):
    """The bar shows a picture as wide as it is."""

    def reading_count(self):
        """Readings stand apart by more than the letters of one."""
        self.assertEqual(len(self.amperly.items()), 1)
        return len(self.desktop.settle().ink_groups(gap=6))

    def test_picture_is_wide_and_as_high_as_the_bar_draws_it(self):
        """The bar would take a larger one and scale it down, which blurs it."""
        self.on_battery()
        self.start()
        (width, height), = self.amperly.item().picture_sizes()
        self.assertGreater(width, 2 * height)
        self.assertEqual(height, 22 * self.desktop.scale)


del StatusItem

if __name__ == "__main__":
    unittest.main(verbosity=2)
