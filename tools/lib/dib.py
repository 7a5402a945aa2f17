"""Pictures of sixteen colours as Windows keeps them, in bitmap files as in icons: four bits a pixel, and a
palette. Every Windows reads them."""

import struct

Rows = list[list[int]]  # pixels from the top, each a palette index or a bit of a mask
Palette = list[tuple[int, int, int]]  # red, green and blue

COLOUR_COUNT = 16


def information_header(width: int, height: int, pixel_bytes: int) -> bytes:
    """What precedes the palette; of an icon, the height is that of the picture and the mask together."""
    return struct.pack("<IiiHHIIiiII", 40, width, height, 1, 4, 0, pixel_bytes, 0, 0, COLOUR_COUNT, 0)


def pack_palette(palette: Palette) -> bytes:
    """The palette, filled up to sixteen colours."""
    colours = palette + [(0, 0, 0)] * (COLOUR_COUNT - len(palette))
    return b"".join(bytes((blue, green, red, 0)) for red, green, blue in colours)


def pack_rows(rows: Rows, bits: int) -> bytes:
    """The pixels, so many bits each, as they are stored: from the bottom, rows filled up to 32 bits."""
    packed = b""
    for row in reversed(rows):
        value = 0
        for pixel in row:
            value = value << bits | pixel
        used = len(row) * bits
        size = (used + 31) // 32 * 4
        packed += (value << size * 8 - used).to_bytes(size, "big")
    return packed
