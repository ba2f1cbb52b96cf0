"""The program's icon in all formats for desktops, Windows and the installer: the product mark on
the accent colour."""

import struct

import skin_icons
from vector import path, png
from vector.canvas import Image

SIZES = (16, 24, 32, 48, 64, 128, 256)
_MARK = 16  # the icon "Mark" is drawn in a square of this side
_CORNER, _SHARE = 0.2, 0.74  # of the side: the round corner, the mark


def _bitmap(size, accent, surface):
    image = Image(size, size)
    edge = size / 32 if size > 32 else 0
    image.fill(path.rounded(edge, edge, size - 2 * edge, size - 2 * edge, size * _CORNER), accent)
    scale = size * _SHARE / _MARK
    offset = (size - _MARK * scale) / 2
    skin_icons.draw(image, "Mark", offset, offset, surface, scale, accent)
    return image


def _svg(accent, surface):
    size = 64
    edge, scale = size / 32, size * _SHARE / _MARK
    offset = (size - _MARK * scale) / 2
    return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {size} {size}">\n'
            f'<rect x="{edge:g}" y="{edge:g}" width="{size - 2 * edge:g}" height="{size - 2 * edge:g}" '
            f'rx="{size * _CORNER:g}" fill="{accent}"/>\n'
            f'<g transform="translate({offset:g} {offset:g}) scale({scale:g})">\n'
            f'{skin_icons.svg("Mark", surface, accent)}</g>\n</svg>\n').encode("ascii")


def files(accent, surface):
    """(file name, bytes): the scalable icon, a PNG for each size, and all of these in one .ico
    (https://learn.microsoft.com/windows/win32/menurc/newheader; entries are PNG files)."""
    pictures = [(size, png.encode(size, size, _bitmap(size, accent, surface).rgba())) for size in SIZES]
    entries, place = b"", 6 + 16 * len(pictures)
    for size, data in pictures:
        entries += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(data), place)
        place += len(data)
    yield "quorvel.svg", _svg(accent, surface)
    yield from ((f"quorvel-{size}.png", data) for size, data in pictures)
    yield "quorvel.ico", struct.pack("<HHH", 0, 1, len(pictures)) + entries + b"".join(data for _, data in pictures)


def _bmp(image):
    """Bottom row first, BGR, rows padded to four bytes, as needed by the installer."""
    rgba, width, height = image.rgba(), image.width, image.height
    rows = b""
    for y in reversed(range(height)):
        row = rgba[y * width * 4:(y + 1) * width * 4]
        bgr = bytearray(width * 3)
        bgr[0::3], bgr[1::3], bgr[2::3] = row[2::4], row[1::4], row[0::4]
        rows += bytes(bgr) + bytes(-width * 3 % 4)
    header = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(rows), 2835, 2835, 0, 0)
    return struct.pack("<2sIHHI", b"BM", 14 + len(header) + len(rows), 0, 0, 14 + len(header)) + header + rows


def setup_pictures(accent, surface):
    """(file name, bytes): what the installer shows on its first and last page, and above the others."""
    side = Image(164, 314)
    side.fill(path.rounded(0, 0, 164, 314, 0), accent)
    # Half of a large, darker mark, cropped by the edge, below the product's own.
    skin_icons.draw(side, "Mark", 4, 130, "#185493", 15.0, accent)
    skin_icons.draw(side, "Mark", 34, 36, surface, 6.0, accent)
    yield "side.bmp", _bmp(side)
    top = Image(150, 57)
    top.fill(path.rounded(0, 0, 150, 57, 0), surface)
    top.fill(path.rounded(101, 8, 41, 41, 8), accent)
    skin_icons.draw(top, "Mark", 106.5, 13.5, surface, 30 / _MARK, accent)
    yield "top.bmp", _bmp(top)
