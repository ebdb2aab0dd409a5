"""What a screen reader finds: the accessible tree of a program's windows.

Run as a program of the session, since the library finds the accessibility bus by its environment:
prints the tree of the process whose id is given, as JSON.
"""

import json
import pathlib
import sys

A11Y = "org.a11y.Bus"
A11Y_PATH = "/org/a11y/bus"
MOST_CHILDREN = 500


def enable(session):
    """Tells programs started from now on that somebody may be listening."""
    from gi.repository import GLib
    session.bus.call(A11Y, A11Y_PATH, A11Y, "GetAddress")  # starts the service
    for setting in ("IsEnabled", "ScreenReaderEnabled"):
        session.bus.set_property(
            A11Y, A11Y_PATH, "org.a11y.Status", setting, GLib.Variant("b", True))


def tree_of(session, process):
    """[{role, name, title, description, states, place, children}] of the program's windows;
    maybe none yet. The title is the name of the label that belongs to it, the place its left, top,
    width and height in the window."""
    folder = pathlib.Path(__file__).resolve().parent
    script = session.write(session.directory / "accessible.py", (folder / "accessible.py").read_text())
    return json.loads(session.run("/usr/bin/python3", script, process))


def walk(nodes):
    """Every node of a tree, parents first."""
    for node in nodes:
        yield node
        yield from walk(node["children"])


def _title(accessible):
    from gi.repository import Atspi
    for relation in accessible.get_relation_set():
        if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY:
            return relation.get_target(0).get_name()
    return ""


def _place(accessible):
    from gi.repository import Atspi
    component = accessible.get_component_iface()
    if component is None:
        return None
    place = component.get_extents(Atspi.CoordType.WINDOW)
    return [place.x, place.y, place.width, place.height]


def _role(accessible):
    # Called "push button" before AT-SPI 2.56.
    return accessible.get_role_name().replace("push button", "button")


def _describe(accessible):
    states = accessible.get_state_set().get_states()
    children = (accessible.get_child_at_index(index)
                for index in range(min(accessible.get_child_count(), MOST_CHILDREN)))
    return {
        "role": _role(accessible),
        "name": accessible.get_name(),
        "title": _title(accessible),
        "description": accessible.get_description(),
        "place": _place(accessible),
        "states": sorted(state.value_nick for state in states),
        "children": [_describe(child) for child in children if child is not None],
    }


def _main(process):
    import gi
    gi.require_version("Atspi", "2.0")
    from gi.repository import Atspi
    Atspi.init()
    desktop = Atspi.get_desktop(0)
    trees = []
    for index in range(desktop.get_child_count()):
        application = desktop.get_child_at_index(index)
        if application is not None and application.get_process_id() == process:
            trees += [_describe(application.get_child_at_index(child))
                      for child in range(application.get_child_count())]
    print(json.dumps(trees))


if __name__ == "__main__":
    _main(int(sys.argv[1]))
