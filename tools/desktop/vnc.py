"""A pointer and a keyboard for a compositor without hardware, through its VNC server.

Speaks just enough of the remote frame buffer protocol (version 3.8) to send input; never asks
for a picture.
"""

import socket
import string
import struct

from .waiting import DesktopError

TIMEOUT_SECONDS = 10
NO_AUTHENTICATION = 1

KEYS = {"Escape": 0xFF1B, "Return": 0xFF0D, "Tab": 0xFF09, "Up": 0xFF52, "Down": 0xFF54, "End": 0xFF57,
        "Left": 0xFF51, "Right": 0xFF53, "ctrl": 0xFFE3, "alt": 0xFFE9, "comma": 0x2C,
        **{letter: ord(letter) for letter in string.ascii_lowercase}}


class VncInput:
    def __init__(self, socket_path):
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.settimeout(TIMEOUT_SECONDS)
        try:
            self._socket.connect(str(socket_path))
            self._shake_hands()
        except BaseException:
            self._socket.close()
            raise

    def close(self):
        self._socket.close()

    def pointer(self, x, y, buttons=0):
        """`buttons` has bit 0 for the left, 1 for the middle, 2 for the right button."""
        self._socket.sendall(struct.pack(">BBHH", 5, buttons, x, y))

    def click(self, x, y, button=1):
        self.pointer(x, y)
        self.pointer(x, y, 1 << (button - 1))
        self.pointer(x, y)

    def press(self, keys):
        """Presses one key, or several at once such as "ctrl+q"."""
        together = keys.split("+")
        for down, order in ((1, together), (0, reversed(together))):
            for key in order:
                self._socket.sendall(struct.pack(">BBHI", 4, down, 0, KEYS[key]))

    def _shake_hands(self):
        if not self._read(12).startswith(b"RFB 003."):
            raise DesktopError("the VNC server speaks another protocol")
        self._socket.sendall(b"RFB 003.008\n")
        kinds = self._read(self._read(1)[0])
        if NO_AUTHENTICATION not in kinds:
            raise DesktopError("the VNC server wants a password")
        self._socket.sendall(bytes([NO_AUTHENTICATION]))
        if self._read(4) != bytes(4):
            raise DesktopError("the VNC server refused the connection")
        self._socket.sendall(b"\1")  # share the desktop with other viewers
        head = self._read(24)
        self._read(struct.unpack(">I", head[20:24])[0])  # the desktop's name

    def _read(self, size):
        data = b""
        while len(data) < size:
            part = self._socket.recv(size - len(data))
            if not part:
                raise DesktopError("the VNC server hung up")
            data += part
        return data
