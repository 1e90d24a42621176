#!/usr/bin/env python3
"""make_icns.py OUT PNG...: a Mac's icon file from square PNG pictures, which are told apart by their size.

An icns file is "icns" and its length, then for each picture a kind of four letters, a length, and the PNG as it is; both
lengths are big-endian and count their own eight bytes. A kind says a size in points and a density, so that a picture may
be there twice.
"""

import struct
import sys

# kind: pixels. The upper row for a density of 1, the lower one for 2.
KINDS = {b"icp4": 16, b"icp5": 32, b"icp6": 64, b"ic07": 128, b"ic08": 256, b"ic09": 512,
         b"ic11": 32, b"ic12": 64, b"ic13": 256, b"ic14": 512}


def png_size(data):
    if data[:8] != b"\x89PNG\r\n\x1a\n" or data[12:16] != b"IHDR":
        raise ValueError("no PNG picture")
    return struct.unpack(">II", data[16:24])


def main(out, *names):
    pictures = {}
    for name in names:
        with open(name, "rb") as file:
            data = file.read()
        width, height = png_size(data)
        if width != height:
            raise ValueError(f"not square: {name}")
        pictures[width] = data
    entries = b"".join(kind + struct.pack(">I", 8 + len(pictures[pixels])) + pictures[pixels]
                       for kind, pixels in KINDS.items())
    with open(out, "wb") as file:
        file.write(b"icns" + struct.pack(">I", 8 + len(entries)) + entries)


if __name__ == "__main__":
    main(*sys.argv[1:])
