#!/usr/bin/env python3
"""Draws the library's icons: a yellow "C" on a blue rounded square, in the
16 colours of the standard palette, one .ico file of one image per size.
Usage: make-icons.py DIRECTORY  (writes ide16.ico, ide32.ico, ide48.ico)"""
import math
import struct
import sys

# The standard 16-colour palette, as (blue, green, red, 0) quads.
PALETTE = [(0, 0, 0), (128, 0, 0), (0, 128, 0), (128, 128, 0), (0, 0, 128), (128, 0, 128), (0, 128, 128),
           (192, 192, 192), (128, 128, 128), (255, 0, 0), (0, 255, 0), (255, 255, 0), (0, 0, 255),
           (255, 0, 255), (0, 255, 255), (255, 255, 255)]  # (red, green, blue)
TRANSPARENT, BLUE, NAVY, YELLOW, WHITE = None, 12, 4, 11, 15


def colour(size, x, y):
    """The palette index of a pixel, or None outside the square."""
    u = (x + 0.5) / size * 2 - 1
    v = (y + 0.5) / size * 2 - 1
    if u ** 4 + v ** 4 > 0.92:
        return TRANSPARENT
    r = math.hypot(u, v)
    angle = math.degrees(math.atan2(v, u))
    if 0.34 <= r <= 0.66 and abs(angle) > 42:
        return YELLOW
    if u ** 4 + v ** 4 > 0.70:
        return NAVY
    return BLUE


def icon(size):
    rows = []
    mask_rows = []
    for y in reversed(range(size)):  # bottom-up
        pixels = [colour(size, x, y) for x in range(size)]
        nibbles = [0 if p is None else p for p in pixels]
        row = bytearray((nibbles[i] << 4) | nibbles[i + 1] for i in range(0, size, 2))
        row += bytes(-len(row) % 4)
        rows.append(bytes(row))
        bits = bytearray((size + 7) // 8)
        for x, p in enumerate(pixels):
            if p is None:
                bits[x // 8] |= 0x80 >> (x % 8)
        bits += bytes(-len(bits) % 4)
        mask_rows.append(bytes(bits))
    palette = b"".join(struct.pack("<BBBB", b, g, r, 0) for r, g, b in PALETTE)
    header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 4, 0, 0, 0, 0, 16, 0)
    image = header + palette + b"".join(rows) + b"".join(mask_rows)
    directory = struct.pack("<HHH", 0, 1, 1) + struct.pack("<BBBBHHII", size, size, 16, 0, 1, 4, len(image), 22)
    return directory + image


if __name__ == "__main__":
    for size in (16, 32, 48):
        with open(f"{sys.argv[1]}/ide{size}.ico", "wb") as out:
            out.write(icon(size))
