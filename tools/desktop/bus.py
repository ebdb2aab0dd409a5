"""A connection to a private session bus, for looking at what programs say there."""

from gi.repository import Gio, GLib

from .waiting import DesktopError

CALL_MILLISECONDS = 5000


class Bus:
    def __init__(self, address):
        flags = (Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
                 | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
        try:
            self._connection = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
        except GLib.Error as error:
            # It hangs up on users that the system's list of users does not know.
            raise DesktopError(f"the session bus can't be joined: {error.message}") from error

    def close(self):
        if not self._connection.is_closed():
            self._connection.close_sync(None)

    def call(self, name, path, interface, method, signature="()", *arguments):
        """Calls a method and returns its results as a tuple of plain values."""
        try:
            reply = self._connection.call_sync(
                name, path, interface, method, GLib.Variant(signature, arguments), None,
                Gio.DBusCallFlags.NONE, CALL_MILLISECONDS, None)
        except GLib.Error as error:
            raise DesktopError(f"{interface}.{method} of {name}: {error.message}") from error
        return reply.unpack()

    def properties(self, name, path, interface):
        return self.call(
            name, path, "org.freedesktop.DBus.Properties", "GetAll", "(s)", interface)[0]

    def property(self, name, path, interface, property_name):
        return self.call(name, path, "org.freedesktop.DBus.Properties", "Get", "(ss)", interface,
                         property_name)[0]

    def set_property(self, name, path, interface, property_name, variant):
        self.call(name, path, "org.freedesktop.DBus.Properties", "Set", "(ssv)", interface,
                  property_name, variant)

    def has_name(self, name):
        return self._ask_bus("NameHasOwner", name)

    def process_of(self, name):
        return self._ask_bus("GetConnectionUnixProcessID", name)

    def names(self):
        return self.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                         "ListNames")[0]

    def _ask_bus(self, method, name):
        return self.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                         method, "(s)", name)[0]
