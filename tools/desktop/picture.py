"""Pictures of a screen: cut, enlarged, compared, written as PNG."""

import mmap
import pathlib
import re
import struct
import zlib

from .waiting import DesktopError


class Picture:
    """Rows of red, green, blue bytes."""

    def __init__(self, width, height, pixels):
        self.width = width
        self.height = height
        self.pixels = bytes(pixels)

    def __eq__(self, other):
        return (self.width, self.height, self.pixels) == (other.width, other.height, other.pixels)

    def __hash__(self):
        return hash((self.width, self.height, self.pixels))

    def at(self, x, y):
        start = (y * self.width + x) * 3
        return tuple(self.pixels[start:start + 3])

    def row(self, y):
        return self.pixels[y * self.width * 3:(y + 1) * self.width * 3]

    def cut(self, x, y, width, height):
        """The part of the picture that lies in a rectangle; what lies outside is left off."""
        left, top = max(0, x), max(0, y)
        right, bottom = min(self.width, x + width), min(self.height, y + height)
        rows = (self.row(each)[left * 3:right * 3] for each in range(top, max(top, bottom)))
        return Picture(max(0, right - left), max(0, bottom - top), b"".join(rows))

    def enlarged(self, factor):
        rows = []
        for y in range(self.height):
            row = self.row(y)
            wide = b"".join(row[x:x + 3] * factor for x in range(0, len(row), 3))
            rows.append(wide * factor)
        return Picture(self.width * factor, self.height * factor, b"".join(rows))

    def ink(self, background=None, tolerance=24):
        """(left, top, right, bottom) of what differs from the background; None where nothing does.

        Without a background given it is the colour of the top left corner. Right and bottom are
        one past the last pixel.
        """
        columns = self.ink_columns(background, tolerance)
        if not columns:
            return None
        rows = self._ink_rows(background or self.at(0, 0), tolerance)
        return columns[0], rows[0], columns[-1] + 1, rows[-1] + 1

    def ink_columns(self, background=None, tolerance=24):
        """The columns that hold something other than the background."""
        return self._transposed()._ink_rows(background or self.at(0, 0), tolerance)

    def ink_groups(self, gap, background=None):
        """[(left, right)] of what stands apart by at least `gap` columns of background."""
        groups = []
        for column in self.ink_columns(background):
            if groups and column - groups[-1][1] < gap:
                groups[-1][1] = column + 1
            else:
                groups.append([column, column + 1])
        return [tuple(group) for group in groups]

    def changed_area(self, earlier):
        """(left, top, right, bottom) of what differs from an earlier picture of the same size."""
        changes = []
        for y in range(self.height):
            one, other = self.row(y), earlier.row(y)
            if one != other:
                # The first and the last byte that differ are the highest and the lowest set bits.
                bits = int.from_bytes(one, "big") ^ int.from_bytes(other, "big")
                first = len(one) - (bits.bit_length() + 7) // 8
                last = len(one) - ((bits & -bits).bit_length() + 7) // 8
                changes.append((y, first // 3, last // 3))
        if not changes:
            return None
        return (min(left for _, left, _ in changes), changes[0][0],
                max(right for _, _, right in changes) + 1, changes[-1][0] + 1)

    def save(self, path):
        path = pathlib.Path(path)
        path.parent.mkdir(parents=True, exist_ok=True)
        rows = b"".join(b"\0" + self.row(y) for y in range(self.height))
        header = struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)
        path.write_bytes(b"\x89PNG\r\n\x1a\n" + _chunk(b"IHDR", header)
                         + _chunk(b"IDAT", zlib.compress(rows, 6)) + _chunk(b"IEND", b""))
        return path

    def _ink_rows(self, background, tolerance):
        plain = bytes(background) * self.width
        return [y for y in range(self.height)
                if (row := self.row(y)) != plain and _differs(row, plain, tolerance)]

    def _transposed(self):
        stride = self.width * 3
        columns = bytearray(len(self.pixels))
        for x in range(self.width):
            start = x * self.height * 3
            for channel in range(3):
                columns[start + channel:start + self.height * 3:3] = self.pixels[x * 3 + channel::stride]
        return Picture(self.height, self.width, columns)


def _differs(row, plain, tolerance):
    return any(abs(one - other) > tolerance for one, other in zip(row, plain))


def _chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def from_ppm(data):
    """A picture from a binary portable pixmap with 8-bit channels."""
    head = re.match(rb"P6\s+(\d+)\s+(\d+)\s+255\s", data)
    if head is None:
        raise DesktopError("the screenshot is not a portable pixmap")
    return Picture(int(head[1]), int(head[2]), data[head.end():])


class FrameBuffer:
    """The screen of a virtual X server, which keeps it in a file that can be mapped."""

    def __init__(self, path):
        with open(path, "rb") as file:
            self._bytes = mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)
        # The head of an X window dump: 25 big-endian numbers, a name, then the colour table.
        head = struct.unpack(">25I", self._bytes[:100])
        self.width, self.height = head[4], head[5]
        self._stride = head[12]
        colours = head[19]
        self._start = head[0] + colours * 12
        if head[11] != 32 or head[7] != 0:
            raise DesktopError("the virtual screen is not of 32-bit little-endian pixels")

    def picture(self, x=0, y=0, width=None, height=None):
        left, top = max(0, x), max(0, y)
        right = self.width if width is None else min(self.width, x + width)
        bottom = self.height if height is None else min(self.height, y + height)
        pixels = bytearray((right - left) * (bottom - top) * 3)
        size = (right - left) * 4
        for line in range(top, bottom):
            start = self._start + line * self._stride + left * 4
            row = self._bytes[start:start + size]
            at = (line - top) * (right - left) * 3
            end = at + (right - left) * 3
            pixels[at:end:3] = row[2::4]
            pixels[at + 1:end:3] = row[1::4]
            pixels[at + 2:end:3] = row[0::4]
        return Picture(right - left, bottom - top, pixels)

    def close(self):
        self._bytes.close()
