"""The icons of the skin as path data. Each piece is (kind, path text) or (kind, path text, opacity):
"line" is an outline with round ends, "thin" one of 1.25 px, "butt" one with square ends and 2 px,
"wide" one of 4.5 px, "dash" one of short strokes, "full" an area with its outline, "dot" an area without, "hole" an outline
round the ground, "cut" an outline through which the ground shows. 16 px icons take an outline of
1.5 px, larger ones of 2 px. A new icon is one entry here; make_skin.py then draws its masks."""

import copy

from vector import path
from vector.canvas import Image


def _circle(x, y, radius):
    return f"M{x - radius} {y}a{radius} {radius} 0 1 1 {2 * radius} 0a{radius} {radius} 0 1 1 {-2 * radius} 0z"


_EYE = ("M1.75 8C4 4.6 6 3.75 8 3.75S12 4.6 14.25 8C12 11.4 10 12.25 8 12.25S4 11.4 1.75 8z")

_SMALL = {
    "Add": [("butt", "M8 3v10M3 8h10")],
    "Remove": [("butt", "M3 8h10")],
    "Save": [("line", "M2.75 2.75h8l2.5 2.5v8h-10.5z"), ("line", "M5.25 3v3.25h4.5V3M4.75 13V9.25h6.5V13")],
    "Close": [("line", "M3.75 3.75l8.5 8.5M12.25 3.75l-8.5 8.5")],
    "Exit": [("line", "M6.75 2.75h-4v10.5h4"), ("line", "M6.5 8h7M10.6 4.8L13.8 8l-3.2 3.2")],
    "First": [("line", "M3.75 14V2.5"), ("full", "M3.75 3h9l-2.3 2.9 2.3 2.9h-9z")],
    "Previous": [("line", "M10 3.5L5.5 8l4.5 4.5")],
    "Previous10": [("line", "M7.5 3.5L3 8l4.5 4.5M13 3.5L8.5 8l4.5 4.5")],
    "Next": [("line", "M6 3.5L10.5 8 6 12.5")],
    "Next10": [("line", "M8.5 3.5L13 8l-4.5 4.5M3 3.5L7.5 8 3 12.5")],
    "Zone": [("line", "M3 5.2l7-2.4 3.4 5.9-4.6 4.6-5.4-2.2z")]
            + [("full", _circle(x, y, 1.3)) for x, y in ((3, 5.2), (10, 2.8), (13.4, 8.7), (8.8, 13.3), (3.4, 11.1))],
    "Open": [("line", "M2 12.75V3.5h4.2l1.5 1.75H13v2"), ("line", "M2 12.75l2-5.5h10.5l-2 5.5z")],
    "Undo": [("line", "M5.75 2.75L2.5 6l3.25 3.25"), ("line", "M2.75 6H9.5a3.6 3.6 0 0 1 0 7.2H6")],
    "Redo": [("line", "M10.25 2.75L13.5 6l-3.25 3.25"), ("line", "M13.25 6H6.5a3.6 3.6 0 0 0 0 7.2H10")],
    "More": [("full", _circle(x, 8, 1)) for x in (3.5, 8, 12.5)],
    "Note": [("line", "M2.75 2.75h10.5v10.5H2.75zM8 7.25v3.5M8 5.1v.2")],
    "History": [("line", "M2.75 3v3h3M8 5v3.25l2.25 1.5"), ("line", "M3 5.9A5.5 5.5 0 1 1 2.6 9")],
    "Gear": [("line", _circle(8, 8, 2.25)),
             ("line", "M8 2v1.75M8 12.25V14M2 8h1.75M12.25 8H14M3.75 3.75L5 5M11 11l1.25 1.25"
                      "M12.25 3.75L11 5M5 11l-1.25 1.25")],
    "Book": [("line", "M8 4C6.5 2.9 4.5 2.6 2 2.75v9.75c2.5-.15 4.5.15 6 1.25 1.5-1.1 3.5-1.4 6-1.25V2.75"
                      "C11.5 2.6 9.5 2.9 8 4zM8 4v9.5")],
    "Mark": [("line", "M4.6 8C8 8 7.6 3.75 11 3.75M4.6 8C8 8 7.6 12.25 11 12.25"),
             ("full", _circle(3.5, 8, 2.25)), ("full", _circle(12.25, 3.75, 2)),
             ("hole", _circle(12.25, 12.25, 1.75))],
    "Check": [("line", "M3.5 8.5l3 3 6-7")],
    "Chevron": [("thin", "M-3.75 -1.75L0 2l3.75 -3.75")],
    "Video": [("line", "M1.75 3.75h12.5v8.5H1.75z"), ("full", "M6.5 5.75v4.5L10.25 8z")],
    "NoVideo": [("line", "M1.75 3.75h12.5v8.5H1.75z"), ("line", "M2.5 13.5L13.5 2.5")],
    "Map": [("line", "M1.75 6.25h4v3.5h-4zM10.25 2.75h4v3.5h-4zM10.25 9.75h4v3.5h-4z"),
            ("line", "M5.75 8H8M10 4.5H8v7h2")],
    "Play": [("full", "M4.5 3v10l8-5z")],
    "PlayHere": [("butt", "M3.25 2.5v11"), ("full", "M6.5 3.25v9.5l7-4.75z")],
    "Pause": [("full", "M4.5 3.5h2v9h-2zM9.5 3.5h2v9h-2z")],
    "Stop": [("full", "M4 4h8v8H4z")],
    "Restart": [("butt", "M3 3v10"), ("full", "M12.5 3.5v9L6 8z")],
    "Up": [("line", "M8 13V3.5M3.75 7.5L8 3.25l4.25 4.25")],
    "Down": [("line", "M8 3v9.5M3.75 8.5L8 12.75l4.25-4.25")],
    "ChevronUp": [("line", "M3.75 10L8 5.75 12.25 10")],
    "ChevronDown": [("line", "M3.75 6l4.25 4.25L12.25 6")],
    "Copy": [("line", "M5.75 5.75h7.5v7.5h-7.5z"), ("line", "M3.75 10.25h-1v-7.5h7.5v1")],
    "Paste": [("line", "M5.5 3.5H3.25v10h9.5v-10H10.5"), ("line", "M5.75 2.25h4.5v2.5h-4.5z")],
    "Trash": [("line", "M2.75 4.25h10.5M6 4V2.5h4V4M4 4.5l.75 9h6.5l.75-9")],
    "Search": [("line", _circle(7, 7, 4.25)), ("line", "M10.25 10.25L13.5 13.5")],
    "ZoomIn": [("line", "M8 3.5v9M3.5 8h9")],
    "ZoomOut": [("line", "M3.5 8h9")],
    "Fit": [("line", "M2.75 5.75v-3h3M10.25 2.75h3v3M13.25 10.25v3h-3M5.75 13.25h-3v-3")],
    "Minimize": [("line", "M3.5 11.5h9")],
    "Maximize": [("line", "M3.25 3.25h9.5v9.5h-9.5z")],
    "Restore": [("line", "M3 5.5h7.5V13H3z"), ("line", "M5.5 5.25V3H13v7.5h-2.25")],
    "Sound": [("full", "M2.5 6.25h2L8 3.25v9.5l-3.5-3h-2z"),
              ("line", "M10.5 5.75a3.2 3.2 0 0 1 0 4.5M12.25 4a5.6 5.6 0 0 1 0 8")],
    "Mute": [("full", "M2.5 6.25h2L8 3.25v9.5l-3.5-3h-2z"), ("line", "M10.75 6l3.5 4M14.25 6l-3.5 4")],
    "Eye": [("line", _EYE), ("full", _circle(8, 8, 1.6))],
    "EyeOff": [("line", _EYE, 0.55), ("line", "M3 13L13 3")],
    "Loupe": [("line", _circle(7, 7, 4.5)), ("line", "M10.4 10.4L13.75 13.75M7 5v4M5 7h4")],
    "Onion": [("line", "M2.5 5.5h6v6h-6z", 0.5), ("line", "M5 4h6v6H5z", 0.75), ("line", "M7.5 2.5h6v6h-6z")],
    "AllZones": [("line", "M1.75 3.5l4.5-1 2 4-4 2.25z"), ("line", "M9 8.5l4.75 1-1.5 4.25-5-1z")],
    "Panel": [("line", "M2 3h12v10H2zM10 3v10")],
    "Interpolate": [("full", _circle(2.75, 12, 1.5)), ("full", _circle(13.25, 4, 1.5)),
                    ("dash", "M4.25 10.9l7.5-5.8")],
    "Follow": [("line", "M2.5 5.5v-3h3M10.5 2.5h3v3M13.5 10.5v3h-3M5.5 13.5h-3v-3"),
               ("full", _circle(8, 8, 1.75))],
    "Bolt": [("full", "M9 1.75L3.75 9H7l-.75 5.25L12.25 6.5H8.5z")],
    "Back": [("line", "M5.75 3.25L2.5 6.5l3.25 3.25"), ("line", "M2.75 6.5H10a3 3 0 0 1 3 3v3")],
    "Dice": [("line", "M3 3h10v10H3z")]
            + [("full", _circle(x, x, 0.8)) for x in (5.8, 8, 10.2)],
    "End": [("line", "M2.5 8h7M6.75 4.75L10 8l-3.25 3.25M12.75 3.5v9")],
    "Error": [("dot", "M5.4 2h5.2L14 5.4v5.2L10.6 14H5.4L2 10.6V5.4z"), ("cut", "M8 4.75v4M8 11v.3")],
    "Warning": [("full", "M8 2.25L14.75 13.5H1.25z"), ("cut", "M8 6.5v3.25M8 11.5v.2")],
    "Import": [("line", "M8 2.5v7M4.9 6.6L8 9.75l3.1-3.15M2.5 10.5v3h11v-3")],
    "Web": [("line", _circle(8, 8, 5.75)), ("line", "M2.25 8h11.5M8 2.25c-4 3.6-4 7.9 0 11.5M8 2.25c4 3.6 4 7.9 0 11.5")],
    "Keys": [("line", "M1.75 4.25h12.5v7.5H1.75z"),
             ("line", "M4 6.75h.1M6.6 6.75h.1M9.3 6.75h.1M11.9 6.75h.1M5 9.25h6")],
    "Folder": [("line", "M2 12.75V3.5h4.2l1.5 1.75H14v7.5z")],
    "Leads": [("line", "M1.75 4h4v3h-4zM1.75 9.5h4v3h-4zM10.25 6.5h4v3h-4z"),
              ("line", "M5.75 5.5H8V8h2.25M5.75 11H8V8")],
    "AutoFill": [("line", "M3.5 5.25L6.25 8 3.5 10.75.75 8z"), ("full", "M12.5 5.25L15.25 8l-2.75 2.75L9.75 8z"),
                 ("line", "M6.5 8h3"), ("dash", "M4.5 13h7")],
    "Scale": [("line", "M3 9.5V13h3.5M13 6.5V3H9.5M3.5 12.5l9-9")],
    "Rotate": [("line", "M13 3v3.25H9.75"), ("line", "M12.8 6A5.25 5.25 0 1 0 13.2 9.25")],
    "Rectangle": [("line", "M3.5 4.5h9v7h-9z")]
                 + [("full", _circle(x, y, 1.3)) for x in (3.5, 12.5) for y in (4.5, 11.5)],
    "ClearLines": [("wide", "M2.5 12.5L13.5 3.5", 0.35), ("line", "M2.5 12.5L13.5 3.5")],
    "Match": [("line", "M3 3.5v9M13 3.5v9")]
             + [("full", _circle(x, y, 1.4)) for x in (3, 13) for y in (4, 12)] + [("dash", "M6 8h4")],
}
_TOOLS = {
    "Move": [("full", _circle(12, 12, 2.75)), ("line", "M12 7V2.2M12 21.8V17M7 12H2.2M21.8 12H17"),
             ("line", "M9.4 4.6L12 2l2.6 2.6M9.4 19.4L12 22l2.6-2.6M4.6 9.4L2 12l2.6 2.6M19.4 9.4L22 12l-2.6 2.6")],
    "AddPoint": [("line", "M2 22l6.5-9.5L22 19.5"), ("full", _circle(8.5, 12.5, 3.25)),
                 ("line", "M18 1.5v9M13.5 6h9")],
    "AddMultiPoint": [("line", "M3.75 20L8.5 10.5l12 9.5"), ("full", _circle(3.75, 20, 2.5)),
                      ("full", _circle(8.5, 10.5, 2.5)), ("full", _circle(20.25, 20, 2.5)),
                      ("line", "M18 1.5v9M13.5 6h9")],
    "DeletePoint": [("line", "M2 22l6.5-9.5L22 19.5"), ("full", _circle(8.5, 12.5, 3.25)),
                    ("line", "M14.8 2.8l6.4 6.4M21.2 2.8l-6.4 6.4")],
}
_LARGE = {
    "CheckLarge": [("line", "M6 17l7 7 13-16")],
    "ImportLarge": [("line", "M16 5v14M9.8 13.2L16 19.5l6.2-6.3M5 21v6h22v-6")],
    "Question": [("line", _circle(16, 16, 13.5)), ("line", "M12 12.6a4 4 0 1 1 5.7 3.6c-1.2.6-1.7 1.3-1.7 2.6"),
                 ("dot", _circle(16, 22.7, 1.3))],
}


def names():
    """(name, side of its square) of every icon that has a mask, in the order of the sheets."""
    for pieces, side in ((_SMALL, 16), (_TOOLS, 24), (_LARGE, 32)):
        yield from ((name, side) for name in sorted(pieces) if name != "Chevron")


def _pieces(name, width):
    """(shape, the outline of its hole, opacity) of each piece; a cut has no opacity."""
    for kind, text, *opacity in (_SMALL.get(name) or _TOOLS.get(name) or _LARGE[name]):
        shape = path.parse(text)
        share = None if kind == "cut" else opacity[0] if opacity else 1.0
        if kind == "hole":
            yield path.stroke(shape, width), shape, share
        elif kind == "dot":
            yield shape, None, share
        elif kind == "full":
            yield shape + path.stroke(shape, width), None, share
        elif kind == "dash":
            yield path.stroke(path.dashed(shape, 1.5, 2.1), width), None, share
        else:
            thick = {"butt": 2.0, "thin": 1.25, "cut": 1.6, "wide": 4.5}.get(kind, width)
            yield path.stroke(shape, thick, "butt" if kind == "butt" else "round"), None, share


def draw(image, name, x, y, colour, scale=1.0, ground="#FFFFFF"):
    """Draws an icon with its top left corner at x, y; pieces that overlap are one area, holes and cuts
    show `ground`."""
    pieces = list(_pieces(name, 1.5 if name in _SMALL else 2.0))

    def fill(shapes, tone, opacity=1.0):
        image.fill(path.union(*(path.moved(shape, x, y, scale) for shape in shapes)), tone, opacity)

    for shape, _, opacity in pieces:
        if opacity and opacity < 1:
            fill([shape], colour, opacity)
    fill([shape for shape, hole, opacity in pieces if opacity == 1 and not hole], colour)
    for shape, hole, opacity in pieces:
        if hole:
            fill([hole], ground)
            fill([shape], colour)
        elif opacity is None:
            fill([shape], ground)


class Sheet:
    """Masks: how much of each pixel an icon covers, as a white picture with that alpha; and pictures."""

    def __init__(self, width, height):
        self.width, self.height = width, height
        self._picture = Image(width, height)
        self._picture.fill(path.rounded(0, 0, width, height, 0), "#000000")
        self._laid = []

    def draw(self, name, x, y, scale):
        draw(self._picture, name, x, y, "#FFFFFF", scale, "#000000")

    def rgba(self):
        cover = self._picture.rgba()[::4]
        pixels = bytearray(b"".join(b"\xff\xff\xff" + bytes((share,)) if share else b"\0\0\0\0" for share in cover))
        for image, x, y in self._laid:
            rows = image.rgba()
            for row in range(image.height):
                place = ((y + row) * self.width + x) * 4
                pixels[place:place + image.width * 4] = rows[row * image.width * 4:(row + 1) * image.width * 4]
        return bytes(pixels)

    def copy(self):
        """One with the same masks, to lay other pictures into."""
        other = copy.copy(self)
        other._laid = list(self._laid)
        return other

    def lay(self, image, x, y):
        self._laid.append((image, x, y))


def svg(name, colour, ground="#FFFFFF"):
    """A small icon as SVG elements in its own 16 x 16 square."""
    out = ""
    for kind, text in _SMALL[name]:
        fill = {"full": colour, "dot": colour, "hole": ground}.get(kind, "none")
        width = {"butt": 2, "thin": 1.25, "dot": 0}.get(kind, 1.5)
        cap = "butt" if kind == "butt" else "round"
        out += (f'<path d="{text}" fill="{fill}" stroke="{colour}" stroke-width="{width}" '
                f'stroke-linecap="{cap}" stroke-linejoin="round"/>\n')
    return out
