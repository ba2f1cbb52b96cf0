"""PNG files of 8-bit RGBA, written and read with zlib alone (https://www.w3.org/TR/png/)."""

import struct
import zlib

_SIGNATURE = b"\x89PNG\r\n\x1a\n"


def _chunk(kind, body):
    return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))


def _filtered(row, above, kind):
    out = bytearray()
    for i, value in enumerate(row):
        left = row[i - 4] if i >= 4 else 0
        up = above[i]
        out.append((value - (left if kind == 1 else up if kind == 2 else 0)) & 255)
    return bytes(out)


def encode(width, height, rgba):
    """rgba: height rows of width*4 bytes, the top row first. Each row takes its cheapest filter."""
    lines = bytearray()
    above = bytes(width * 4)
    for y in range(height):
        row = rgba[y * width * 4:(y + 1) * width * 4]
        choices = [(kind, _filtered(row, above, kind)) for kind in (0, 1, 2)]
        kind, line = min(choices, key=lambda c: sum(min(value, 256 - value) for value in c[1]))
        lines += bytes((kind,)) + line
        above = row
    header = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)
    return _SIGNATURE + _chunk(b"IHDR", header) + _chunk(b"IDAT", zlib.compress(bytes(lines), 9)) + _chunk(b"IEND", b"")


def decode(data):
    """(width, height, rgba) of a file that encode() wrote; ValueError for any other."""
    if data[:8] != _SIGNATURE:
        raise ValueError("no PNG file")
    offset, body, header = 8, b"", None
    while offset + 8 <= len(data):
        size, kind = struct.unpack(">I4s", data[offset:offset + 8])
        if kind == b"IHDR":
            header = struct.unpack(">IIBBBBB", data[offset + 8:offset + 8 + size])
        elif kind == b"IDAT":
            body += data[offset + 8:offset + 8 + size]
        offset += size + 12
    if header is None or header[2:] != (8, 6, 0, 0, 0):
        raise ValueError("not 8-bit RGBA without interlace")
    width, height = header[:2]
    lines = zlib.decompress(body)
    out = bytearray()
    above = bytearray(width * 4)
    for y in range(height):
        start = y * (width * 4 + 1)
        kind, row = lines[start], bytearray(lines[start + 1:start + 1 + width * 4])
        for i in range(len(row)):
            left = row[i - 4] if i >= 4 else 0
            row[i] = (row[i] + (left if kind == 1 else above[i] if kind == 2 else 0)) & 255
        out += row
        above = row
    return width, height, bytes(out)
