#!/usr/bin/env python3
"""Draws the library's icons: makes the .ico files beside this script from the drawings (.txt) beside it.

    draw_icons.py                 writes every .ico file
    draw_icons.py --check         writes nothing; fails and says which files differ from their drawings
    draw_icons.py --sheet FILE    writes all images, enlarged, on a light and a dark ground, as a PNG picture

A drawing holds one grid of letters per size, each under a line "size N"; a letter is a tone of TONES and gives one
pixel. Every depth of a size is made from the same grid, so that the depths differ in tones and never in shape.
"""

import struct
import sys
import zlib
from pathlib import Path

FOLDER = Path(__file__).resolve().parent

SMALL = ((16, 4), (16, 8), (16, 32))
LARGE = ((32, 4), (16, 4), (32, 8), (16, 8), (32, 32), (16, 32))

# Each icon with its images as (size in pixels, bits per pixel), in the order of the file.
ICONS = {
    "address_book": SMALL,
    "container": SMALL,
    "fax": ((32, 4), (16, 4)),
    "person": SMALL,
    "group": SMALL,
    "address_book_application": LARGE,
    "profiles": LARGE,
}

# The standard palette of 16-colour images.
PALETTE_16 = (
    0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080, 0x808080,
    0xC0C0C0, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF,
)

# Letter: (colour in 16-colour images, colour in the other depths, opacity in 32-bit images). A tone without a
# 16-colour value is transparent in the two depths that have no partial opacity.
TONES = {
    ".": (None, 0x000000, 0x00),
    ",": (None, 0x000000, 0x48),
    ";": (None, 0x000000, 0x20),
    "K": (0x000000, 0x27323D, 0xFF),
    "W": (0xFFFFFF, 0xFFFFFF, 0xFF),
    "w": (0xC0C0C0, 0xDDE3E8, 0xFF),
    "g": (0xC0C0C0, 0xC3CCD4, 0xFF),
    "G": (0x808080, 0x8595A3, 0xFF),
    "N": (0x808080, 0x55636F, 0xFF),
    "t": (0x008080, 0x6FC0DB, 0xFF),
    "T": (0x008080, 0x2D8FB5, 0xFF),
    "d": (0x008080, 0x22718F, 0xFF),
    "D": (0x000080, 0x185169, 0xFF),
    "y": (0xFFFFFF, 0xFFF0BE, 0xFF),
    "Y": (0xFFFF00, 0xFFD15C, 0xFF),
    "O": (0x808000, 0xC98F1E, 0xFF),
    "r": (0xFF0000, 0xE8685C, 0xFF),
    "R": (0x800000, 0xB83A32, 0xFF),
    "e": (0x00FF00, 0x8FD08A, 0xFF),
    "E": (0x008000, 0x4C9E55, 0xFF),
    "F": (0x008000, 0x2F7340, 0xFF),
    "b": (0x0000FF, 0x7FA9E8, 0xFF),
    "B": (0x0000FF, 0x3F6FC4, 0xFF),
    "C": (0x000080, 0x284A8C, 0xFF),
    "S": (0xFFFFFF, 0xF8D3AE, 0xFF),
    "s": (0xC0C0C0, 0xDDA877, 0xFF),
    "h": (0x800000, 0x8C5C36, 0xFF),
    "H": (0x800000, 0x5E3A20, 0xFF),
}

# The palette of 256-colour images: black, every other tone, and black in the rest.
PALETTE_256 = tuple(dict.fromkeys([0x000000] + [colour for _, colour, _ in TONES.values()]))
PALETTE_256 += (0x000000,) * (256 - len(PALETTE_256))


def read_drawing(name):
    """The grids of a drawing by size, each a list of rows."""
    grids = {}
    for line in (FOLDER / f"{name}.txt").read_text("ascii").split("\n"):
        if line.startswith("size "):
            size = int(line.split()[1])
            grids[size] = []
        elif line:
            grids[size].append(line)
    for size, rows in grids.items():
        if len(rows) != size or any(len(row) != size for row in rows):
            raise SystemExit(f"{name}.txt: the grid of size {size} is not {size} rows of {size} letters")
        unknown = set("".join(rows)) - set(TONES)
        if unknown:
            raise SystemExit(f"{name}.txt: no such tone: {' '.join(sorted(unknown))}")
    return grids


def get_pixel(letter, depth):
    """A pixel's colour and opacity at a depth."""
    colour16, colour, opacity = TONES[letter]
    if depth == 32:
        return colour, opacity
    if colour16 is None:
        return 0x000000, 0x00
    return (colour16 if depth == 4 else colour), 0xFF


def pack_bits(values, width):
    """Packs values of `width` bits, the first in the highest bits, into bytes padded to a multiple of four."""
    number = 0
    for value in values:
        number = number << width | value
    bits = len(values) * width
    padded = -(-bits // 32) * 32
    return (number << padded - bits).to_bytes(padded // 8, "big")


def encode_image(rows, depth):
    """An icon image: bitmap header, palette, colours and transparency mask, both bottom row first."""
    size = len(rows)
    palette = {4: PALETTE_16, 8: PALETTE_256, 32: ()}[depth]
    colours = bytearray()
    mask = bytearray()
    for row in reversed(rows):
        pixels = [get_pixel(letter, depth) for letter in row]
        if depth == 32:
            colours += b"".join(struct.pack("<I", opacity << 24 | colour) for colour, opacity in pixels)
        else:
            colours += pack_bits([palette.index(colour) for colour, _ in pixels], depth)
        mask += pack_bits([int(opacity == 0) for _, opacity in pixels], 1)
    # The height counts the colours and the mask.
    byte_count = len(colours) + len(mask)
    header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, depth, 0, byte_count, 0, 0, len(palette), 0)
    return header + b"".join(struct.pack("<I", colour) for colour in palette) + bytes(colours + mask)


def encode_icon(name):
    """The bytes of an icon file."""
    grids = read_drawing(name)
    images = [(size, depth, encode_image(grids[size], depth)) for size, depth in ICONS[name]]
    directory = struct.pack("<HHH", 0, 1, len(images))
    offset = len(directory) + 16 * len(images)
    for size, depth, image in images:
        colour_count = 16 if depth == 4 else 0
        directory += struct.pack("<BBBBHHII", size, size, colour_count, 0, 1, depth, len(image), offset)
        offset += len(image)
    return directory + b"".join(image for _, _, image in images)


def write_png(path, rows):
    """Writes rows of 0xRRGGBB pixels as a PNG picture."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    lines = b"".join(b"\0" + b"".join(pixel.to_bytes(3, "big") for pixel in row) for row in rows)
    header = struct.pack(">IIBBBBB", len(rows[0]), len(rows), 8, 2, 0, 0, 0)
    path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(lines)) +
                     chunk(b"IEND", b""))


def blend(colour, opacity, ground):
    mixed = 0
    for shift in (16, 8, 0):
        above, below = colour >> shift & 0xFF, ground >> shift & 0xFF
        mixed |= (above * opacity + below * (255 - opacity)) // 255 << shift
    return mixed


def draw_sheet(path, zoom=8, gap=4):
    """One line of pictures per icon: its images on white, then on dark grey, enlarged."""
    width = 2 * (max(sum(size + gap for size, _ in images) for images in ICONS.values()) + gap)
    rows = []
    for name, images in ICONS.items():
        grids = read_drawing(name)
        height = max(size for size, _ in images) + gap
        for y in range(height):
            row = []
            for ground in (0xFFFFFF, 0x303030):
                line = [ground] * gap
                for size, depth in images:
                    letters = grids[size][y] if y < size else "." * size
                    line += [blend(*get_pixel(letter, depth), ground) for letter in letters] + [ground] * gap
                row += line + [ground] * (width // 2 - len(line))
            rows += [[pixel for pixel in row for _ in range(zoom)]] * zoom
    write_png(path, rows)


def main(arguments):
    if arguments[:1] == ["--sheet"] and len(arguments) == 2:
        draw_sheet(Path(arguments[1]))
        return 0
    if arguments not in ([], ["--check"]):
        print(__doc__, file=sys.stderr)
        return 2
    differing = 0
    for name in ICONS:
        path = FOLDER / f"{name}.ico"
        data = encode_icon(name)
        if not arguments:
            path.write_bytes(data)
        elif not path.exists() or path.read_bytes() != data:
            print(f"{path}: differs from its drawing; run {Path(__file__).name} to draw it again")
            differing += 1
    return 1 if differing else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
