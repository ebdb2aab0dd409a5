"""Pictures of the item in real panels, at both scales, on dark and on light, checked by what must
hold: it is there, whole, crisp and readable. They stay in the pictures folder to be looked at."""

import unittest

from support import PICTURES, DesktopTest

from desktop.status_area import DARK, LIGHT
from desktop.waybar import Waybar
from desktop.xfce_panel import XfcePanel


class Pictures(DesktopTest):
    def test_item_is_whole_and_inside_the_panel(self):
        picture, (left, top, right, bottom) = self.take("item")
        scale = self.desktop.scale
        self.assertGreaterEqual(top, 2 * scale)
        self.assertLessEqual(bottom, (self.desktop.panel_height - 2) * scale)
        self.assertLessEqual(right, picture.width - 2 * scale)
        self.assertGreater(bottom - top, 10 * scale)
        self.assertGreater(right - left, 20 * scale)

    def test_ink_stands_out_from_the_panel(self):
        picture, (left, top, right, bottom) = self.take("item")
        ink = picture.cut(left, top, right - left, bottom - top)
        brightest, darkest = max(ink.pixels), min(ink.pixels)
        if self.desktop.look == DARK:
            self.assertGreater(brightest, 200)
        else:
            self.assertLess(darkest, 80)

    def test_readings_of_a_charging_machine_fit(self):
        picture, (left, top, right, bottom) = self.take("charging", charging=True)
        self.assertLessEqual(bottom, (self.desktop.panel_height - 2) * self.desktop.scale)
        self.assertLessEqual(right, picture.width - 2 * self.desktop.scale)

    def test_large_text_fits(self):
        _, (_, top, _, bottom) = self.take("large", largeText=True)
        self.assertGreaterEqual(top, 1)
        self.assertLessEqual(bottom, self.desktop.panel_height * self.desktop.scale - 1)

    def test_single_line_fits(self):
        _, (_, top, _, bottom) = self.take("single-line", stackedLayout=False)
        self.assertGreaterEqual(top, 1)
        self.assertLessEqual(bottom, self.desktop.panel_height * self.desktop.scale - 1)

    def take(self, name, charging=False, **preferences):
        """Saves a picture of the panel; returns it with the bounds of the ink in it."""
        self.on_battery(power_now=18700000)
        if charging:
            self.machine.plug_in(power_now=28400000)
        self.start(**preferences)
        bounds = self.desktop.wait_for_ink()
        picture = self.desktop.panel_picture()
        context = picture.cut(bounds[0] - 60 * self.desktop.scale, 0, picture.width, picture.height)
        desktop = self.desktop
        context.enlarged(4 // desktop.scale).save(
            PICTURES / f"{name}-{desktop.kind}-{desktop.look}-{desktop.scale}x.png")
        return picture, bounds


class Crisp:
    def test_item_is_drawn_for_the_scale_and_not_blown_up(self):
        picture, (left, top, right, bottom) = self.take("item")
        even = picture.cut(left - left % 2, top - top % 2, right - left, bottom - top)
        blocks = [(x, y) for y in range(0, even.height - 1, 2) for x in range(0, even.width - 1, 2)]
        mixed = sum(len({even.at(x, y), even.at(x + 1, y), even.at(x, y + 1), even.at(x + 1, y + 1)}) > 1
                    for x, y in blocks)
        self.assertGreater(mixed, 20)


class XfceDark(Pictures):
    @staticmethod
    def make_desktop():
        return XfcePanel(scale=1, look=DARK)


class XfceLight(Pictures):
    @staticmethod
    def make_desktop():
        return XfcePanel(scale=1, look=LIGHT)


class XfceDoubleSize(Crisp, Pictures):
    @staticmethod
    def make_desktop():
        return XfcePanel(scale=2, look=DARK)


class WaybarOnce(Pictures):
    @staticmethod
    def make_desktop():
        return Waybar(scale=1)


class WaybarDoubleSize(Crisp, Pictures):
    @staticmethod
    def make_desktop():
        return Waybar(scale=2)


del Pictures

if __name__ == "__main__":
    unittest.main(verbosity=2)
