#!/usr/bin/env python3
"""Makes the program's icon: five red stones in a row on a corner of the board.

    make_icon.py OUTPUT.ico

Every size is a drawing of its own (see SIZES): cells, lines and border are whole pixels, and what would only blur at
that size is left out. rsvg-convert renders each drawing at its one size; nothing is scaled.
Sizes below 256 are stored as 32-bit bitmaps, 256 as PNG.
"""

import struct
import subprocess
import sys
import zlib
from pathlib import Path

# size: (border, cell, line, stone, details). A row of five cells with four lines between them and the border on both
# sides fills the size; what remains goes to the right and the bottom. Details: 0 flat, 1 shaded, 2 glass.
SIZES = {
    16: (1, 2, 1, 3.0, 0),
    20: (1, 3, 0.75, 3.4, 0),
    24: (1, 4, 0.5, 4.2, 0),
    32: (1, 5, 1, 5.4, 1),
    48: (2, 8, 1, 8.0, 1),
    64: (2, 11, 1, 10.4, 2),
    256: (9, 46, 2, 42.0, 2),
}
RED_CELLS = [(i, 4 - i) for i in range(5)]
BLUE_CELLS = [(1, 1), (2, 1), (3, 3), (1, 4), (3, 2)]

COLOURS = {
    "frame": "#4a2d1a", "frame_light": "#7a5032", "board": "#fef3e2", "line": "#b9aa98",
    "red": "#e0302c", "red_light": "#ff8a80", "red_dark": "#9c0610",
    "blue": "#3a56e0", "blue_light": "#8ea6ff", "blue_dark": "#10209a",
}  # fmt: skip


def stone(colour, x, y, diameter, details):
    """One stone about x, y: a disc, and with details its shadow, its inner glow and the mirrored window."""
    r = diameter / 2
    if details == 0:
        return f'<circle cx="{x}" cy="{y}" r="{r}" fill="{COLOURS[colour]}"/>'
    rim = max(0.8, diameter * 0.055)
    parts = [
        f'<circle cx="{x + r * 0.14}" cy="{y + r * 0.20}" r="{r}" fill="#5a3a22" opacity="0.32"/>',
        f'<circle cx="{x}" cy="{y}" r="{r - rim / 2}" fill="url(#{colour})" '
        f'stroke="{COLOURS[colour + "_dark"]}" stroke-width="{rim}"/>',
    ]
    if details == 2:
        parts.append(
            f'<ellipse cx="{x + r * 0.22}" cy="{y + r * 0.42}" rx="{r * 0.50}" ry="{r * 0.34}" '
            f'fill="{COLOURS[colour + "_light"]}" opacity="0.55" filter="url(#soft{round(diameter)})"/>'
            f'<ellipse cx="{x - r * 0.28}" cy="{y - r * 0.40}" rx="{r * 0.36}" ry="{r * 0.24}" fill="#ffffff" '
            f'opacity="0.9" transform="rotate(-30 {x - r * 0.28} {y - r * 0.40})"/>'
        )
    else:
        parts.append(f'<circle cx="{x - r * 0.30}" cy="{y - r * 0.34}" r="{r * 0.24}" fill="#ffffff" opacity="0.85"/>')
    return "".join(parts)


def drawing(size):
    border, cell, line, diameter, details = SIZES[size]
    pitch = cell + line
    inner = 5 * cell + 4 * line
    edge = 2 * border + inner
    corner = max(1.5, size * 0.08)
    svg = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{size}" height="{size}" viewBox="0 0 {size} {size}"><defs>']
    for colour in ("red", "blue"):
        svg.append(
            f'<radialGradient id="{colour}" cx="0.40" cy="0.34" r="0.72">'
            f'<stop offset="0" stop-color="{COLOURS[colour + "_light"]}"/>'
            f'<stop offset="0.5" stop-color="{COLOURS[colour]}"/>'
            f'<stop offset="1" stop-color="{COLOURS[colour + "_dark"]}"/></radialGradient>'
        )
    svg.append(
        f'<filter id="soft{round(diameter)}" x="-50%" y="-50%" width="200%" height="200%">'
        f'<feGaussianBlur stdDeviation="{diameter * 0.06}"/></filter>'
        f'<linearGradient id="frame" x1="0" y1="0" x2="1" y2="1"><stop offset="0" stop-color="{COLOURS["frame_light"]}"/>'
        f'<stop offset="1" stop-color="{COLOURS["frame"]}"/></linearGradient></defs>'
    )
    svg.append(f'<rect width="{edge}" height="{edge}" rx="{corner}" fill="url(#frame)"/>')
    svg.append(
        f'<rect x="{border}" y="{border}" width="{inner}" height="{inner}" rx="{max(0.5, corner - border)}" '
        f'fill="{COLOURS["board"]}"/>'
    )
    if line >= 1 and size >= 32:
        for i in range(1, 5):
            at = border + i * pitch - line
            svg.append(f'<rect x="{at}" y="{border}" width="{line}" height="{inner}" fill="{COLOURS["line"]}"/>')
            svg.append(f'<rect x="{border}" y="{at}" width="{inner}" height="{line}" fill="{COLOURS["line"]}"/>')
    cells = [("red", cell_at) for cell_at in RED_CELLS]
    if size >= 32:
        cells += [("blue", cell_at) for cell_at in BLUE_CELLS]
    for colour, (column, row) in cells:
        x, y = border + column * pitch + cell / 2, border + row * pitch + cell / 2
        svg.append(stone(colour, x, y, diameter, details))
    return "".join(svg) + "</svg>"


def render(size):
    """The drawing of a size as PNG, without any text or time in it."""
    command = ["rsvg-convert", "--width", str(size), "--height", str(size)]
    return subprocess.run(command, input=drawing(size).encode(), stdout=subprocess.PIPE, check=True).stdout


def png_chunks(png):
    at = 8
    while at < len(png):
        (length,) = struct.unpack_from(">I", png, at)
        yield png[at + 4 : at + 8], png[at + 8 : at + 8 + length]
        at += 12 + length


def pixels(png):
    """The rows of an 8-bit RGBA PNG."""
    data = b""
    for name, content in png_chunks(png):
        if name == b"IHDR":
            width, height, depth, kind, _, _, interlaced = struct.unpack(">IIBBBBB", content)
            if (depth, kind, interlaced) != (8, 6, 0):
                sys.exit("make_icon: expected an 8-bit RGBA picture")
        elif name == b"IDAT":
            data += content
    data = zlib.decompress(data)
    stride = width * 4
    rows, above = [], bytearray(stride)
    for y in range(height):
        method = data[y * (stride + 1)]
        row = bytearray(data[y * (stride + 1) + 1 : (y + 1) * (stride + 1)])
        for i in range(stride):
            left = row[i - 4] if i >= 4 else 0
            corner = above[i - 4] if i >= 4 else 0
            row[i] = (row[i] + predictor(method, left, above[i], corner)) & 255
        rows.append(bytes(row))
        above = row
    return rows


def predictor(method, left, up, corner):
    if method == 4:
        estimate = left + up - corner
        return min((left, up, corner), key=lambda value: abs(estimate - value))
    return (0, left, up, (left + up) // 2)[method]


def bitmap(png):
    """The icon form of a picture: header of double height, rows from the bottom up as BGRA, mask of 1 bit."""
    rows = pixels(png)
    size = len(rows)
    colour, mask = b"", b""
    for row in reversed(rows):
        bits = 0
        for x in range(size):
            r, g, b, a = row[x * 4 : x * 4 + 4]
            colour += bytes((b, g, r, a)) if a else bytes(4)
            bits = bits << 1 | (a == 0)
        padded = (size + 31) // 32 * 32
        mask += (bits << padded - size).to_bytes(padded // 8, "big")
    header = struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, 32, 0, len(colour) + len(mask), 0, 0, 0, 0)
    return header + colour + mask


def main():
    images = [(size, render(size)) for size in SIZES]
    images = [(size, png if size == 256 else bitmap(png)) for size, png in images]
    offset = 6 + 16 * len(images)
    head, body = struct.pack("<HHH", 0, 1, len(images)), b""
    for size, image in images:
        head += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(image), offset + len(body))
        body += image
    Path(sys.argv[1]).write_bytes(head + body)


if __name__ == "__main__":
    main()
