#!/usr/bin/env python3
"""Makes the default skin: its layouts are in data/UI, its images are drawn from the descriptions below,
light ones and, in the folder Dark, dark ones.
The program's icon is drawn into data/icon, where packages find it.

  tools/make_skin.py FOLDER    the whole skin; images are drawn anew when a description has changed
  tools/make_skin.py --icon    writes data/icon/*
  tools/make_skin.py --check   compares data/icon with what it would draw; exit 1 when a file differs
  tools/make_skin.py --sheet F all images on one sheet, enlarged four times
  tools/make_skin.py --setup D the pictures of the installer's pages into the folder D

Needs Python 3 alone. The pixels are the same on every machine. Beside FOLDER lies FOLDER.drawn, which
says from what its images were drawn.
"""

import functools
import hashlib
import math
import os
import pathlib
import sys

import program_icon
import skin_icons
import skin_sheet
from vector import canvas, path, png

TOOLS = pathlib.Path(__file__).resolve().parent
LAYOUTS = TOOLS.parent / "data" / "UI"
ICON_FOLDER = LAYOUTS.parent / "icon"
ICON_TABLE = "Icons.txt"

SHADES = ("", "Dark")  # the light skin and its folder of dark images
# Each tone in the light and the dark skin. Layouts and the program name those of PALETTE.
TONES = {
    "ink": ("#1C2733", "#E4EAF0"), "value": ("#000000", "#FFFFFF"), "muted": ("#465362", "#B3BECA"),
    "hint": ("#596675", "#9BA8B6"), "window": ("#F3F5F8", "#20262D"), "band": ("#E6EBF1", "#2A323B"),
    "surface": ("#FFFFFF", "#14191F"), "line": ("#D3DAE2", "#3A4550"), "edge": ("#7C8A9A", "#7F8E9E"),
    "frame": ("#8A97A5", "#0B0E12"), "accent": ("#1D63AD", "#63AEF5"), "primary": ("#1D63AD", "#2A72BD"),
    "onprimary": ("#FFFFFF", "#FFFFFF"), "selected": ("#C1E3FF", "#1E466D"), "onselected": ("#124274", "#BFE0FF"),
    "hot": ("#E9F5FF", "#27394B"), "off": ("#98A4B1", "#66727F"), "danger": ("#A8221B", "#FF9D93"),
    "warn": ("#7A4A00", "#F2C46D"), "warnfill": ("#FFF0CF", "#3A2E14"), "warnedge": ("#B97A0A", "#C99330"),
    "good": ("#1B6B3C", "#7FD6A0"), "question": ("#33475B", "#0E1318"), "onquestion": ("#FFFFFF", "#FFFFFF"),
    "tip": ("#2B3947", "#E4EAF0"), "ontip": ("#FFFFFF", "#14191F"), "listedge": ("#A9B4C0", "#4A5662"),
    "divider": ("#C3CCD6", "#4A5662"), "rowline": ("#E8ECF1", "#242B33"), "selectedline": ("#A6D2F7", "#2F6395"),
    "itemoff": ("#CCCCCC", "#5C6874"), "canvas": ("#FAFBFC", "#171C22"), "stage": ("#20262D", "#0E1216"),
    "onstage": ("#B3BECA", "#B3BECA"), "tag": ("#E61C2733", "#E61C2733"), "ontag": ("#FFFFFF", "#FFFFFF"),
    "halo": ("#B3FFFFFF", "#B314191F"), "rest": ("#DDE4EB", "#333D47"), "run": ("#4088D0", "#3F86CC"),
    "playhead": ("#124274", "#BFE0FF"), "tick": ("#B4BFCA", "#4A5662"), "default": ("#465362", "#B3BECA"),
    "key": ("#1D63AD", "#7DBBF7"), "zone": ("#0B6B60", "#5CCFC0"), "random": ("#6A3D9E", "#C5A3F2"),
    "onkind": ("#FFFFFF", "#14191F"),
}
PALETTE = tuple(TONES)
ACCENT, SURFACE = TONES["accent"][0], TONES["surface"][0]  # of the program's icon
# Of images alone.
TONES |= {
    "primaryhover": ("#185493", "#2E78C6"), "primarypressed": ("#124274", "#1F5C9C"),
    "primaryoff": ("#E1E6EC", "#2A323B"), "dangerhover": ("#FCECEA", "#42262A"), "dangerpressed": ("#F6D5D2", "#5A2C30"),
    "questionsign": ("#33475B", "#B3BECA"), "checkoff": ("#C9D1DA", "#3A4550"), "chevronoff": ("#B9C3CE", "#55606C"),
    "thumbhover": ("#596675", "#9BA8B6"),
}

# State: (fill, edge) for each kind of button.
SECONDARY = {
    "Normal": ("surface", "edge"),
    "Hover": ("hot", "accent"),
    "Click": ("selected", "onselected"),
    "Inactive": ("window", "line"),
    "Chosen": ("selected", "accent"),
}
PRIMARY = {
    "Normal": ("primary", "primary"),
    "Hover": ("primaryhover", "primaryhover"),
    "Click": ("primarypressed", "primarypressed"),
    "Inactive": ("primaryoff", "line"),
}
DANGEROUS = {"Hover": ("dangerhover", "danger"), "Click": ("dangerpressed", "danger")}  # else as SECONDARY
# The colours of icons: at rest, under the pointer, pressed, inactive, chosen.
TINTS = {
    "button": ("muted", "onselected", "onselected", "off", "onselected"),
    "primary": ("onprimary", "onprimary", "onprimary", "off", "onprimary"),
    "danger": ("danger", "danger", "danger", "off", "danger"),
    "flag": ("muted", "muted", "muted", "off", "accent"),
    "accent": ("accent", "accent", "accent", "off", "accent"),
    "muted": ("muted", "muted", "muted", "off", "muted"),
    "warning": ("warnedge", "warnedge", "warnedge", "off", "warnedge"),
    "good": ("good", "good", "good", "off", "good"),
    "off": ("off", "off", "off", "off", "off"),
    "question": ("questionsign", "questionsign", "questionsign", "off", "questionsign"),
    "badge": ("onkind", "onkind", "onkind", "onkind", "onkind"),
}
SCALES = (100, 125, 150, 200, 300)  # percent, for which icons are drawn
SHEET_COLUMNS = 12

FIELD = {
    "Normal": ("surface", "edge"),
    "Hover": ("surface", "accent"),
    "Click": ("surface", "accent"),
    "Inactive": ("window", "line"),
}
BOX = {  # fill, edge, tick
    "Normal": ("surface", "edge", None),
    "Hover": ("hot", "accent", None),
    "Inactive": ("window", "line", None),
    "Click": ("primary", "primary", "onprimary"),
    "ClickHover": ("primaryhover", "primaryhover", "onprimary"),
    "ClickInactive": ("checkoff", "checkoff", "onprimary"),
}
THUMB = {"Normal": "edge", "Hover": "thumbhover", "Click": "onselected"}


def colour(tone):
    """The tone in the skin that is drawn."""
    return TONES[tone][SHADES.index(Image.shade)]


class Image(canvas.Image):
    """A picture whose shapes are given at 100 percent and drawn at Image.scale, with the tones of Image.shade."""

    scale = 1.0
    shade = SHADES[0]

    def __init__(self, width, height):
        super().__init__(self.pixels(width), self.pixels(height))

    @classmethod
    def pixels(cls, length):
        return math.floor(length * cls.scale + 0.5)

    @classmethod
    def snapped(cls, length):
        """The length that is a whole number of pixels."""
        return cls.pixels(length) / cls.scale

    @classmethod
    def line(cls):
        """The width of a line of one pixel: whole pixels, rounded down."""
        return max(1, math.floor(cls.scale)) / cls.scale

    def fill(self, shape, tone, opacity=1.0, even_odd=False):
        super().fill(path.moved(shape, 0, 0, self.scale), colour(tone), opacity, even_odd)


def box_path(x, y, width, height, radius, inset=0.0):
    """A round box with its edges on whole pixels."""
    left, top, right, bottom = (Image.snapped(edge) for edge in (x, y, x + width, y + height))
    return path.rounded(left + inset, top + inset, right - left - 2 * inset, bottom - top - 2 * inset,
                        max(0, radius - inset))


def framed(image, x, y, width, height, fill, edge, radius=3):
    """A box with an edge of one pixel."""
    image.fill(box_path(x, y, width, height, radius), edge)
    if fill != edge:
        image.fill(box_path(x, y, width, height, radius, Image.line()), fill)


def flat(colour, width=3, height=3):
    image = Image(width, height)
    image.fill(box_path(0, 0, width, height, 0), colour)
    return image


def button(look, height=25):
    image = Image(16, height)
    framed(image, 0, 0, 16, height, *look)
    return image


def combo(state):
    """48 x 25 for corners 5,4,28,4: the chevron is in the right 28."""
    fill, edge = FIELD[state]
    image = Image(48, 25)
    framed(image, 0, 0, 48, 25, fill, edge)
    grip = {"Hover": ("hot", "selected"), "Click": ("selected", "accent")}.get(state)
    if grip:
        line = Image.line()
        inside = Image.snapped(25) - 2 * line
        image.fill(path.rounded(40, line, Image.snapped(48) - 40 - line, inside, 2), grip[0])
        image.fill(path.rounded(20, line, 24, inside, 0), grip[0])
        image.fill(path.rounded(4, line, 16, inside, 0), fill)
        image.fill(path.rounded(20, line, line, inside, 0), grip[1])
    skin_icons.draw(image, "Chevron", 34, 13, "chevronoff" if state == "Inactive" else "muted")
    return image


def box(image, x, y, state):
    fill, edge, tick = BOX[state]
    framed(image, x, y, 18, 18, fill, edge)
    if tick:
        skin_icons.draw(image, "Check", x + 1, y + 1, tick)
    return image


def ring(width, height, colour, thick=2, radius=3):
    image = Image(width, height)
    outer = box_path(0, 0, width, height, radius)
    inner = box_path(0, 0, width, height, radius, Image.snapped(thick))
    image.fill(outer + inner, colour, even_odd=True)
    return image


def primary_ring():
    """2 px dark, then a white line: seen on the accent fill."""
    image = ring(12, 12, "onselected")
    inner = Image.snapped(2)
    image.fill(box_path(0, 0, 12, 12, 3, inner) + box_path(0, 0, 12, 12, 3, inner + Image.line()), "surface",
               even_odd=True)
    return image


def check_ring():
    """Around an 18 px box: 1 px white, then 2 px accent, 24 x 24 in all."""
    image = ring(24, 24, "accent", 2, 6)
    inner = Image.snapped(2)
    image.fill(box_path(0, 0, 24, 24, 6, inner) + box_path(0, 0, 24, 24, 6, inner + Image.line()), "surface",
               even_odd=True)
    return image


def thumb(colour):
    image = Image(8, 12)
    image.fill(path.rounded(0, 0, 8, 12, 4), colour)
    return image


def tab(fill, top=None):
    """The head of a page; the chosen one is open below and has a bar on its upper edge."""
    image = Image(16, 32)
    if fill:
        image.fill(path.rounded(0, 0, 16, 32, 0), "line" if top else fill)
        line = Image.line()
        image.fill(path.rounded(line, line, 16 - 2 * line, 32, 0), fill)
    if top:
        image.fill(box_path(0, 0, 16, 3, 0), top)
    return image


def buttons():
    for kind, looks in (("Button", SECONDARY), ("Primary", PRIMARY), ("Danger", DANGEROUS)):
        for state, look in looks.items():
            yield kind + state, button(look)


def tabs():
    for state, look in (("Normal", (None,)), ("Hover", ("hot",)), ("Inactive", ("window", "line")), ("Chosen", ("surface", "accent"))):
        yield "Tab" + state, tab(*look)


def fields():
    for state in FIELD:
        yield "Combo" + state, combo(state)
        if state != "Click":
            yield "Edit" + state, button(FIELD[state])
    for state, colour in (("Normal", "surface"), ("Selected", "selected"), ("Hover", "hot")):
        yield "ComboItem" + state, flat(colour)
    for state in ("Normal", "Hover", "Click", "Inactive"):
        yield "Option" + state, box(Image(18, 18), 0, 0, state)
    for state in BOX:
        yield "Check" + state, box(Image(44, 25), 0, 4, state)


def parts():
    yield "FocusRing", ring(12, 12, "accent")
    yield "FocusRingPrimary", primary_ring()
    yield "FocusRingCheck", check_ring()
    for state, colour in THUMB.items():
        yield "ScrollThumb" + state, thumb(colour)
    card = Image(12, 12)
    framed(card, 0, 0, 12, 12, "surface", "line", 4)
    yield "Card", card
    bubble = Image(12, 12)
    framed(bubble, 0, 0, 12, 12, "surface", "accent", 4)
    yield "Bubble", bubble
    notice = Image(12, 12)
    framed(notice, 0, 0, 12, 12, "hot", "accent")
    yield "Notice", notice


def icons():
    """(name, x, y, side) of every icon in the sheets at 100 percent. All are multiples of 4, so that
    they fall on whole pixels at every scale."""
    x = y = row = 0
    for name, side in skin_icons.names():
        if x + side > SHEET_COLUMNS * 16:
            x, y, row = 0, y + row, 0
        yield name, x, y, side
        x, row = x + side, max(row, side)


def faces():
    for group in (buttons, tabs, fields, parts, templates):
        yield from group()


def places_of_faces(top):
    """(name, x, y, width, height) of every other image in the sheets of larger scales, below `top`; in
    cells whose corners are multiples of 4."""
    x, y, row = 0, top, 0
    for name, image in faces():
        width, height = (-(-length // 4) * 4 for length in (image.width, image.height))
        if x + width > SHEET_COLUMNS * 16:
            x, y, row = 0, y + row, 0
        yield name, x, y, image.width, image.height
        x, row = x + width, max(row, height)


@functools.cache
def masks(percent, height):
    places = list(icons())
    result = skin_icons.Sheet(SHEET_COLUMNS * 16 * percent // 100, height * percent // 100)
    for name, x, y, _ in places:
        result.draw(name, x * percent // 100, y * percent // 100, percent / 100)
    return result


def sheet(percent):
    """The masks of all icons at one scale and, where it is larger than 1, all other images."""
    end = max(y + side for _, _, y, side in icons())
    pictures = list(places_of_faces(end)) if percent > 100 else []
    height = max([end] + [-(-(y + size) // 4) * 4 for _, _, y, _, size in pictures])
    result = masks(percent, height).copy()
    Image.scale = percent / 100
    try:
        for (_, x, y, _, _), (_, image) in zip(pictures, faces() if pictures else ()):
            result.lay(image, x * percent // 100, y * percent // 100)
    finally:
        Image.scale = 1.0
    return result


def icon_table():
    places = list(icons())
    lines = ["# The skin's icons and their colours: at rest, under the pointer, pressed, inactive, chosen."]
    lines += ["scale " + " ".join(str(percent) for percent in SCALES)]
    lines += [f"tint {name} " + " ".join(map(colour, tones)) for name, tones in TINTS.items()]
    lines += [f"color {name} {colour(name)}" for name in PALETTE]
    lines += [f"icon {name} {x} {y} {side}" for name, x, y, side in places]
    lines += [f"image {name}.png {x} {y} {width} {height}"
              for name, x, y, width, height in places_of_faces(max(y + side for _, _, y, side in places))]
    return "\n".join(lines) + "\n"


def sheets():
    for percent in SCALES:
        yield f"Icons{percent}", sheet(percent)


def template(boxes, lines):
    """The branches of a new scene, the first one filled."""
    image = Image(112, 64)
    for line in lines:
        image.fill(path.stroke(path.parse(line), 1.5, "butt"), "muted")
    for number, (x, y) in enumerate(boxes):
        framed_box = path.rounded(x - 0.75, y - 0.75, 23.5, 15.5, 2.75)
        image.fill(framed_box, "edge" if number else "accent")
        image.fill(path.rounded(x + 0.75, y + 0.75, 20.5, 12.5, 1.25), "surface" if number else "accent")
    return image


def templates():
    yield "TemplateEmpty", template([(45, 25)], [])
    yield "TemplateLinear", template([(8, 25), (45, 25), (82, 25)], ["M26 32H86"])
    yield "TemplateQuestion", template(
        [(24, 25), (66, 5), (66, 25), (66, 45)],
        ["M46 32C58 32 54 12 66 12", "M46 32H66", "M46 32C58 32 54 52 66 52"])


def images():
    """Every image as (file name, Image)."""
    for group in (faces, sheets):
        for name, image in group():
            yield name + ".png", image


def description():
    """Changes with everything that the images are drawn from."""
    sources = [TOOLS / "make_skin.py", TOOLS / "skin_icons.py", *sorted((TOOLS / "vector").glob("*.py"))]
    return hashlib.sha256(b"".join(source.read_bytes() for source in sources)).hexdigest()


def write(file, data):
    """In one step: two builds may make the same skin."""
    part = file.with_name(f"{file.name}.{os.getpid()}")
    part.write_bytes(data)
    part.replace(file)


def draw(folder):
    for shade in SHADES:
        Image.shade = shade
        (folder / shade).mkdir(exist_ok=True)
        draw_shade(folder / shade)
    Image.shade = SHADES[0]


def draw_shade(folder):
    wanted = set()
    for name, image in images():
        write(folder / name, png.encode(image.width, image.height, image.rgba()))
        wanted.add(name)
    write(folder / ICON_TABLE, icon_table().encode("ascii"))
    for old in folder.glob("*.png"):
        if old.name not in wanted:
            old.unlink(missing_ok=True)


def compose(folder):
    """The whole skin in `folder`."""
    folder.mkdir(parents=True, exist_ok=True)
    layouts = {file.name: file.read_bytes() for file in LAYOUTS.glob("*.xml")}
    for name, data in layouts.items():
        write(folder / name, data)
    for old in folder.glob("*.xml"):
        if old.name not in layouts:
            old.unlink(missing_ok=True)
    drawn, wanted = folder.with_name(folder.name + ".drawn"), description().encode("ascii")
    if not drawn.exists() or drawn.read_bytes() != wanted:
        draw(folder)
        write(drawn, wanted)


def check_icon():
    wrong = [name for name, data in program_icon.files(ACCENT, SURFACE)
             if (ICON_FOLDER / name).read_bytes() != data]
    print("\n".join(f"{name}: differs from its description" for name in wrong) or "the icon is as described")
    return 1 if wrong else 0


def write_icon():
    ICON_FOLDER.mkdir(parents=True, exist_ok=True)
    for name, data in program_icon.files(ACCENT, SURFACE):
        (ICON_FOLDER / name).write_bytes(data)


def main(arguments):
    if arguments == ["--check"]:
        return check_icon()
    if arguments == ["--icon"]:
        write_icon()
    elif arguments[:1] == ["--sheet"] and len(arguments) == 2:
        skin_sheet.write(images(), arguments[1])
    elif arguments[:1] == ["--setup"] and len(arguments) == 2:
        for name, data in program_icon.setup_pictures(ACCENT, SURFACE):
            (pathlib.Path(arguments[1]) / name).write_bytes(data)
    elif len(arguments) == 1 and not arguments[0].startswith("-"):
        compose(pathlib.Path(arguments[0]))
    else:
        print(__doc__)
        return 2
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
