"""Status items and their menus as a panel sees them over the session bus."""

import dataclasses

from .waiting import DesktopError

WATCHER = "org.kde.StatusNotifierWatcher"
WATCHER_PATH = "/StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
MENU = "com.canonical.dbusmenu"


@dataclasses.dataclass(frozen=True)
class MenuLine:
    """One visible line of an exported menu."""

    number: int
    label: str
    enabled: bool
    separator: bool


class StatusItem:
    def __init__(self, bus, name, path):
        self._bus = bus
        self.name = name
        self.path = path

    def __eq__(self, other):
        return (self.name, self.path) == (other.name, other.path)

    def __hash__(self):
        return hash((self.name, self.path))

    def properties(self):
        return self._bus.properties(self.name, self.path, ITEM)

    def property(self, name):
        return self._bus.property(self.name, self.path, ITEM, name)

    def process(self):
        return self._bus.process_of(self.name)

    def picture_sizes(self):
        """[(width, height)] of the pictures offered, in their order."""
        return [(width, height) for width, height, _ in self.property("IconPixmap")]

    def pictures(self):
        """The pictures' bytes: any change of what is shown changes them."""
        return self.property("IconPixmap")

    def tool_tip(self):
        """The title and the text that a tooltip shows, as one text."""
        _, _, title, text = self.property("ToolTip")
        return " ".join(part for part in (title, text) if part)

    def spoken_label(self):
        """What a screen reader says of the item."""
        return self.property("IconAccessibleDesc")

    def call(self, method, *coordinates):
        self._bus.call(self.name, self.path, ITEM, method, "(ii)", *coordinates)

    def menu(self):
        """The visible lines of the item's menu, asked for as a panel does before it opens it."""
        path = self.property("Menu")
        self._bus.call(self.name, path, MENU, "AboutToShow", "(i)", 0)
        return self.menu_lines()

    def menu_lines(self):
        """The visible lines as they stand."""
        path = self.property("Menu")
        _, (_, _, children) = self._bus.call(
            self.name, path, MENU, "GetLayout", "(iias)", 0, -1, [])
        lines = (_menu_line(child) for child in children)
        return [line for line in lines if line is not None]

    def choose(self, label):
        """Chooses the menu line with this label, as a click on it in the panel's menu does."""
        from gi.repository import GLib
        line = next((each for each in self.menu() if each.label == label), None)
        if line is None:
            raise DesktopError(f"the menu has no line '{label}'")
        self._bus.call(self.name, self.property("Menu"), MENU, "Event", "(isvu)",
                       line.number, "clicked", GLib.Variant("i", 0), 0)


def _menu_line(child):
    number, properties, _ = child
    if not properties.get("visible", True):
        return None
    return MenuLine(number=number, label=properties.get("label", "").replace("_", ""),
                    enabled=properties.get("enabled", True),
                    separator=properties.get("type", "") == "separator")


def has_watcher(bus):
    return bus.has_name(WATCHER)


def registered_items(bus):
    """The items that panels know of; none while there is no watcher."""
    if not has_watcher(bus):
        return []
    entries = bus.property(WATCHER, WATCHER_PATH, WATCHER, "RegisteredStatusNotifierItems")
    items = []
    for entry in entries:
        name, slash, path = entry.partition("/")
        items.append(StatusItem(bus, name, slash + path if slash else "/StatusNotifierItem"))
    return items


def items_of(bus, process):
    """The registered items of the process with this id that are there to be seen."""
    items = []
    for item in registered_items(bus):
        try:
            if item.process() == process and item.property("Status") != "Passive":
                items.append(item)
        except DesktopError:  # the item left just now
            continue
    return items
