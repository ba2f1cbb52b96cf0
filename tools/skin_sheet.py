"""All images of a skin on one sheet, enlarged, in rows on the windows' grey, for viewing."""

import pathlib

from vector import png


def write(images, target, zoom=4):
    """`images`: (name, Image) pairs; `target`: the PNG file."""
    x = y = 8
    line = 0
    placed = []
    for _, image in images:
        if x + image.width > 300:
            x, y, line = 8, y + line + 6, 0
        placed.append((x, y, image))
        x, line = x + image.width + 6, max(line, image.height)
    width, height = 308, y + line + 8
    canvas = [[243, 245, 248] for _ in range(width * height)]
    for left, top, image in placed:
        data = image.rgba()
        for i in range(image.width * image.height):
            pixel, alpha = data[i * 4:i * 4 + 4], data[i * 4 + 3] / 255
            place = (top + i // image.width) * width + left + i % image.width
            canvas[place] = [int(new * alpha + old * (1 - alpha) + 0.5) for new, old in zip(pixel, canvas[place])]
    out = bytearray()
    for row_y in range(height * zoom):
        for column in range(width * zoom):
            out += bytes(canvas[row_y // zoom * width + column // zoom]) + b"\xff"
    pathlib.Path(target).write_bytes(png.encode(width * zoom, height * zoom, bytes(out)))
