"""Waybar on a headless compositor: a status area for real, on Wayland."""

import json

from .status_area import StatusArea
from .wayland_desktop import WaylandDesktop

BAR = {
    "layer": "top", "position": "top", "height": StatusArea.panel_height, "modules-right": ["tray"],
    "tray": {"icon-size": 22, "spacing": 8},
}
STYLE = """
* {{ border: none; border-radius: 0; font-family: "DejaVu Sans"; font-size: 13px; }}
window#waybar {{ background: rgb{colour}; color: white; }}
#tray {{ margin: 0 8px; }}
"""


class Waybar(StatusArea, WaylandDesktop):
    kind = "waybar"

    def __enter__(self):
        super().__enter__()
        try:
            self.start_panel()
        except BaseException:
            self.__exit__()
            raise
        return self

    def panel_command(self):
        folder = self.configuration / "waybar"
        configuration = self.write(folder / "config", json.dumps(BAR))
        style = self.write(folder / "style.css", STYLE.format(colour=self.panel_colour))
        return ["waybar", "--config", configuration, "--style", style]
