#!/usr/bin/env python3
"""icon.py: writes Amperly.icns, the icon of the bundle, from assets/amperly.svg. Needed only when that has changed;
needs rsvg-convert (Debian: librsvg2-bin, Homebrew: librsvg)."""

import pathlib
import struct
import subprocess

# What each entry of the file is called, and how many pixels wide it is. The second of two of the same width is for
# screens with two pixels to the point. 16 and 32 points come from those for such screens alone: the entries of these
# sizes proper hold no PNG on all systems.
ENTRIES = [(b"ic11", 32), (b"ic12", 64), (b"ic07", 128), (b"ic13", 256), (b"ic08", 256), (b"ic14", 512),
           (b"ic09", 512), (b"ic10", 1024)]


def main():
    here = pathlib.Path(__file__).parent
    picture = here.parent.parent / "assets" / "amperly.svg"
    drawn = {}
    for _, width in ENTRIES:
        if width not in drawn:
            drawn[width] = subprocess.run(["rsvg-convert", "-w", str(width), "-h", str(width), picture],
                                          capture_output=True, check=True).stdout
    body = b"".join(name + struct.pack(">I", 8 + len(drawn[width])) + drawn[width] for name, width in ENTRIES)
    (here / "Amperly.icns").write_bytes(b"icns" + struct.pack(">I", 8 + len(body)) + body)


main()
