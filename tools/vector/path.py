"""Shapes as polygons: a path is a list of subpaths, a subpath is (points, closed).

Path texts use the commands of SVG path data (M L H V C S A Z, upper case absolute, lower case
relative), public at https://www.w3.org/TR/SVG2/paths.html.
"""

import math
import re

_TOKEN = re.compile(r"[MLHVCSAZmlhvcsaz]|[-+]?(?:\d+\.\d*|\.\d+|\d+)(?:[eE][-+]?\d+)?")
_ARGUMENTS = {"M": 2, "L": 2, "H": 1, "V": 1, "C": 6, "S": 4, "A": 7}


def _tokens(text):
    """Numbers and letters; the two flags of an arc need no blank between them."""
    found = []
    command, count, index = "", 0, 0
    while index < len(text):
        if command in ("A", "a") and count % 7 in (3, 4) and text[index] in "01":
            found.append(text[index])
            count += 1
            index += 1
            continue
        match = _TOKEN.match(text, index)
        if not match:
            index += 1
            continue
        token = match.group()
        found.append(token)
        index = match.end()
        if token.isalpha():
            command, count = token, 0
        else:
            count += 1
    return found


def _cubic(p0, p1, p2, p3, steps):
    for i in range(1, steps + 1):
        t = i / steps
        u = 1 - t
        a, b, c, d = u * u * u, 3 * u * u * t, 3 * u * t * t, t * t * t
        yield (a * p0[0] + b * p1[0] + c * p2[0] + d * p3[0],
               a * p0[1] + b * p1[1] + c * p2[1] + d * p3[1])


def _arc(p0, rx, ry, rotation, large, sweep, p1, steps):
    """End-point to centre form, SVG 2 appendix B.2.4."""
    if p0 == p1 or rx == 0 or ry == 0:
        yield p1
        return
    phi = math.radians(rotation)
    cos_phi, sin_phi = math.cos(phi), math.sin(phi)
    dx, dy = (p0[0] - p1[0]) / 2, (p0[1] - p1[1]) / 2
    x1, y1 = cos_phi * dx + sin_phi * dy, -sin_phi * dx + cos_phi * dy
    scale = (x1 / rx) ** 2 + (y1 / ry) ** 2
    if scale > 1:
        rx, ry = rx * math.sqrt(scale), ry * math.sqrt(scale)
    under = (rx * ry) ** 2 - (rx * y1) ** 2 - (ry * x1) ** 2
    factor = math.sqrt(max(0.0, under) / ((rx * y1) ** 2 + (ry * x1) ** 2))
    if large == sweep:
        factor = -factor
    cx1, cy1 = factor * rx * y1 / ry, -factor * ry * x1 / rx
    cx = cos_phi * cx1 - sin_phi * cy1 + (p0[0] + p1[0]) / 2
    cy = sin_phi * cx1 + cos_phi * cy1 + (p0[1] + p1[1]) / 2
    start = math.atan2((y1 - cy1) / ry, (x1 - cx1) / rx)
    turn = math.atan2((-y1 - cy1) / ry, (-x1 - cx1) / rx) - start
    if sweep and turn < 0:
        turn += 2 * math.pi
    elif not sweep and turn > 0:
        turn -= 2 * math.pi
    for i in range(1, steps + 1):
        angle = start + turn * i / steps
        x, y = rx * math.cos(angle), ry * math.sin(angle)
        yield (cos_phi * x - sin_phi * y + cx, sin_phi * x + cos_phi * y + cy)


def parse(text, steps=16):
    """Path data as a list of (points, closed); every curve becomes `steps` straight pieces."""
    tokens = _tokens(text)
    subpaths = []
    points = []
    x = y = 0.0
    control = None
    command = ""
    index = 0

    def finish(closed):
        if len(points) > 1:
            subpaths.append((points[:], closed))

    while index < len(tokens):
        if tokens[index].isalpha():
            command = tokens[index]
            index += 1
        kind = command.upper()
        if kind == "Z":
            finish(True)
            x, y = points[0]
            points = [(x, y)]
            continue
        count = _ARGUMENTS[kind]
        values = [float(value) for value in tokens[index:index + count]]
        index += count
        base_x, base_y = (x, y) if command.islower() else (0.0, 0.0)
        here = (x, y)
        if kind == "H":
            x = base_x + values[0]
        elif kind == "V":
            y = base_y + values[0]
        else:
            x, y = base_x + values[-2], base_y + values[-1]
        if kind == "M":
            finish(False)
            points = [(x, y)]
            command = "l" if command.islower() else "L"
        elif kind in ("C", "S"):
            if kind == "C":
                first = (base_x + values[0], base_y + values[1])
                second = (base_x + values[2], base_y + values[3])
            else:
                first = (2 * here[0] - control[0], 2 * here[1] - control[1]) if control else here
                second = (base_x + values[0], base_y + values[1])
            points.extend(_cubic(here, first, second, (x, y), steps))
            control = second
            continue
        elif kind == "A":
            points.extend(_arc(here, values[0], values[1], values[2], values[3] != 0,
                               values[4] != 0, (x, y), steps * 2))
        else:
            points.append((x, y))
        control = None
    finish(False)
    return subpaths


def circle(cx, cy, radius, steps=48):
    return ellipse(cx, cy, radius, radius, steps)


def ellipse(cx, cy, rx, ry, steps=48):
    points = [(cx + rx * math.cos(2 * math.pi * i / steps), cy + ry * math.sin(2 * math.pi * i / steps))
              for i in range(steps)]
    return [(points, True)]


def polygon(*points):
    return [(list(points), True)]


def line(*points):
    return [(list(points), False)]


def rounded(x, y, width, height, radius, steps=8):
    """A rectangle with round corners; radius 0 gives a plain one."""
    if radius <= 0:
        return [([(x, y), (x + width, y), (x + width, y + height), (x, y + height)], True)]
    points = []
    for cx, cy, start in ((x + width - radius, y + radius, -90), (x + width - radius, y + height - radius, 0),
                          (x + radius, y + height - radius, 90), (x + radius, y + radius, 180)):
        for i in range(steps + 1):
            angle = math.radians(start + 90 * i / steps)
            points.append((cx + radius * math.cos(angle), cy + radius * math.sin(angle)))
    return [(points, True)]


def moved(path, dx, dy, scale=1.0):
    return [([(x * scale + dx, y * scale + dy) for x, y in points], closed) for points, closed in path]


def _forward(points):
    """The polygon turned so that its area is positive: overlapping pieces then add up."""
    area = sum(points[i - 1][0] * points[i][1] - points[i][0] * points[i - 1][1] for i in range(len(points)))
    return points if area >= 0 else points[::-1]


def stroke(path, width, cap="round"):
    """The outline of a path with round joins, as overlapping polygons for a non-zero fill."""
    half = width / 2
    pieces = []
    for points, closed in path:
        chain = points + [points[0]] if closed else points
        for (x0, y0), (x1, y1) in zip(chain, chain[1:]):
            length = math.hypot(x1 - x0, y1 - y0)
            if length == 0:
                continue
            nx, ny = (y0 - y1) / length * half, (x1 - x0) / length * half
            pieces.append((_forward([(x0 + nx, y0 + ny), (x1 + nx, y1 + ny), (x1 - nx, y1 - ny), (x0 - nx, y0 - ny)]), True))
        joints = chain if cap == "round" else chain[1:-1]
        for x, y in joints:
            pieces.extend(circle(x, y, half, 24))
    return pieces


def dashed(path, dash, gap):
    """The path cut into strokes of the length `dash`, `gap` apart; each subpath begins with one."""
    pieces = []
    for points, closed in path:
        chain = points + [points[0]] if closed else points
        rest, inked, piece = dash, True, [chain[0]]
        for (x0, y0), (x1, y1) in zip(chain, chain[1:]):
            length, done = math.hypot(x1 - x0, y1 - y0), 0.0
            while length - done > rest:
                done += rest
                place = (x0 + (x1 - x0) * done / length, y0 + (y1 - y0) * done / length)
                if inked:
                    pieces.append((piece + [place], False))
                rest, inked, piece = (gap, False, []) if inked else (dash, True, [place])
            rest -= length - done
            if inked:
                piece.append((x1, y1))
        if inked and len(piece) > 1:
            pieces.append((piece, False))
    return pieces


def union(*paths):
    """Paths as one shape: filled once, so that overlaps show no seam."""
    return [(_forward(points), True) for path in paths for points, _ in path]
