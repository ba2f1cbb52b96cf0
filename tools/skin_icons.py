"""The icons of the skin as path data. Each piece is (kind, path text): "line" is an outline with
round ends, "thin" one of 1.25 px, "butt" one with square ends and 2 px, "full" an area with its
outline, "dot" an area without, "hole" an outline round the ground. 16 px icons take an outline of
1.5 px, larger ones of 2 px."""

from vector import path


def _circle(x, y, radius):
    return f"M{x - radius} {y}a{radius} {radius} 0 1 1 {2 * radius} 0a{radius} {radius} 0 1 1 {-2 * radius} 0z"


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
    "Tick": [("line", "M3.5 8.5l3 3 6-7")],
    "Chevron": [("thin", "M-3.75 -1.75L0 2l3.75 -3.75")],
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
    "Question": [("line", _circle(16, 16, 13.5)), ("line", "M12 12.6a4 4 0 1 1 5.7 3.6c-1.2.6-1.7 1.3-1.7 2.6"),
                 ("dot", _circle(16, 22.7, 1.3))],
}


def draw(image, name, x, y, colour, scale=1.0, ground="#FFFFFF"):
    """Draws an icon with its top left corner at x, y; overlapping pieces are one area, holes show
    `ground`."""
    pieces, width = (_SMALL[name], 1.5) if name in _SMALL else \
        (_TOOLS[name], 2.0) if name in _TOOLS else (_LARGE[name], 2.0)
    shapes = []
    holes = []
    outlines = []
    for kind, text in pieces:
        shape = path.parse(text)
        if kind in ("full", "dot"):
            shapes.append(path.moved(shape, x, y, scale))
        if kind == "hole":
            holes.append(path.moved(shape, x, y, scale))
            outlines.append(path.moved(path.stroke(shape, width), x, y, scale))
            continue
        if kind == "butt":
            shapes.append(path.moved(path.stroke(shape, 2.0, "butt"), x, y, scale))
        elif kind != "dot":
            line = path.stroke(shape, 1.25 if kind == "thin" else width)
            shapes.append(path.moved(line, x, y, scale))
    image.fill(path.union(*shapes), colour)
    for hole in holes:
        image.fill(hole, ground)
    image.fill(path.union(*outlines), colour)


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
