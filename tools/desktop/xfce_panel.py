"""XFCE's panel on a virtual X screen: a status area for real, on X11."""

from .status_area import DARK, StatusArea
from .x11_desktop import X11Desktop

CHANNEL = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="{dark}"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="{size}"/>
      <property name="icon-size" type="uint" value="22"/>
      <property name="background-style" type="uint" value="1"/>
      <property name="background-rgba" type="array">
        <value type="double" value="{red}"/>
        <value type="double" value="{green}"/>
        <value type="double" value="{blue}"/>
        <value type="double" value="1"/>
      </property>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
        <value type="int" value="2"/>
        <value type="int" value="3"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
      <property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-2" type="string" value="systray">
      <property name="icon-size" type="uint" value="22"/>
      <property name="square-icons" type="bool" value="true"/>
      <property name="menu-is-primary" type="bool" value="false"/>
    </property>
    <property name="plugin-3" type="string" value="separator">
      <property name="style" type="uint" value="0"/>
    </property>
  </property>
</channel>
"""


class XfcePanel(StatusArea, X11Desktop):
    kind = "xfce4-panel"

    def __init__(self, scale=1, look=DARK):
        super().__init__(scale)
        self.look = look
        self._write_configuration()

    def __enter__(self):
        super().__enter__()
        try:
            self.add_variables(XDG_CURRENT_DESKTOP="XFCE", XDG_SESSION_DESKTOP="xfce")
            self.start_panel()
        except BaseException:
            self.__exit__()
            raise
        return self

    def panel_command(self):
        return ["xfce4-panel", "--disable-wm-check"]

    def _write_configuration(self):
        red, green, blue = (channel / 255 for channel in self.panel_colour)
        folder = self.configuration / "xfce4/xfconf/xfce-perchannel-xml"
        self.write(folder / "xfce4-panel.xml", CHANNEL.format(
            dark=str(self.look == DARK).lower(), size=self.panel_height, red=red, green=green, blue=blue))
