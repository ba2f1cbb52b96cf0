#!/usr/bin/env python3
"""Draws every image of the default skin into data/UI from the descriptions below, and the program's
icon into data/icon.

  tools/make_skin.py           writes data/UI/*.png, data/icon/*
  tools/make_skin.py --check   compares them with what it would draw; exit 1 when one differs
  tools/make_skin.py --sheet F all images on one sheet, enlarged four times
  tools/make_skin.py --setup D the pictures of the installer's pages into the folder D

Needs Python 3 alone. The pixels are the same on every machine, so the images are kept beside this
script and a build never draws them.
"""

import pathlib
import sys

import program_icon
import skin_icons
import skin_sheet
from vector import path, png
from vector.canvas import Image

FOLDER = pathlib.Path(__file__).resolve().parent.parent / "data" / "UI"
ICON_FOLDER = FOLDER.parent / "icon"

MUTED, WINDOW, SURFACE = "#465362", "#F3F5F8", "#FFFFFF"
LINE, EDGE = "#D3DAE2", "#7C8A9A"
ACCENT, ACCENT_HOVER, ACCENT_PRESSED = "#1D63AD", "#185493", "#124274"
SELECTED, HOT, OFF = "#C1E3FF", "#E9F5FF", "#98A4B1"
DANGER, DANGER_HOVER, DANGER_PRESSED = "#A8221B", "#FCECEA", "#F6D5D2"
QUESTION, CHECK_OFF, CHEVRON_OFF = "#33475B", "#C9D1DA", "#B9C3CE"
THUMB_HOVER = "#596675"

# State: (fill, edge, icon) for each kind of button.
SECONDARY = {
    "Normal": (SURFACE, EDGE, MUTED),
    "Hover": (HOT, ACCENT, ACCENT_PRESSED),
    "Click": (SELECTED, ACCENT_PRESSED, ACCENT_PRESSED),
    "Inactive": (WINDOW, LINE, OFF),
}
PRIMARY = {
    "Normal": (ACCENT, ACCENT, SURFACE),
    "Hover": (ACCENT_HOVER, ACCENT_HOVER, SURFACE),
    "Click": (ACCENT_PRESSED, ACCENT_PRESSED, SURFACE),
    "Inactive": ("#E1E6EC", LINE, OFF),
}
DANGEROUS = {
    "Normal": (SURFACE, EDGE, DANGER),
    "Hover": (DANGER_HOVER, DANGER, DANGER),
    "Click": (DANGER_PRESSED, DANGER, DANGER),
    "Inactive": SECONDARY["Inactive"],
}
FLAT = {  # neither fill nor edge until it is under the pointer
    "Normal": (None, None, MUTED),
    "Hover": SECONDARY["Hover"],
    "Click": SECONDARY["Click"],
    "Inactive": (None, None, OFF),
}
FIELD = {
    "Normal": (SURFACE, EDGE),
    "Hover": (SURFACE, ACCENT),
    "Click": (SURFACE, ACCENT),
    "Inactive": (WINDOW, LINE),
}
BOX = {  # fill, edge, tick
    "Normal": (SURFACE, EDGE, None),
    "Hover": (HOT, ACCENT, None),
    "Inactive": (WINDOW, LINE, None),
    "Click": (ACCENT, ACCENT, SURFACE),
    "ClickHover": (ACCENT_HOVER, ACCENT_HOVER, SURFACE),
    "ClickInactive": (CHECK_OFF, CHECK_OFF, SURFACE),
}
THUMB = {"Normal": EDGE, "Hover": THUMB_HOVER, "Click": ACCENT_PRESSED}


def framed(image, x, y, width, height, fill, edge, radius=3):
    """A box with an edge of one pixel."""
    image.fill(path.rounded(x, y, width, height, radius), edge)
    if fill != edge:
        image.fill(path.rounded(x + 1, y + 1, width - 2, height - 2, radius - 1), fill)


def flat(colour, width=3, height=3):
    image = Image(width, height)
    image.fill(path.rounded(0, 0, width, height, 0), colour)
    return image


def button(width, height, look, icon=None, place=(0, 0)):
    fill, edge, colour = look
    image = Image(width, height)
    if fill:
        framed(image, 0, 0, width, height, fill, edge)
    if icon:
        skin_icons.draw(image, icon, place[0], place[1], colour)
    return image


def combo(state):
    """48 x 25 for corners 5,4,28,4: the chevron is in the right 28."""
    fill, edge = FIELD[state]
    image = Image(48, 25)
    framed(image, 0, 0, 48, 25, fill, edge)
    grip = {"Hover": (HOT, SELECTED), "Click": (SELECTED, ACCENT)}.get(state)
    if grip:
        image.fill(path.rounded(40, 1, 7, 23, 2), grip[0])
        image.fill(path.rounded(20, 1, 24, 23, 0), grip[0])
        image.fill(path.rounded(4, 1, 16, 23, 0), fill)
        image.fill(path.rounded(20, 1, 1, 23, 0), grip[1])
    skin_icons.draw(image, "Chevron", 34, 13, CHEVRON_OFF if state == "Inactive" else MUTED)
    return image


def box(image, x, y, state):
    fill, edge, tick = BOX[state]
    framed(image, x, y, 18, 18, fill, edge)
    if tick:
        skin_icons.draw(image, "Tick", x + 1, y + 1, tick)
    return image


def flag_check(state):
    image = box(Image(64, 25), 0, 4, state)
    colour = OFF if "Inactive" in state else ACCENT if "Click" in state else MUTED
    skin_icons.draw(image, "First", 24, 5, colour)
    return image


def ring(width, height, colour, thick=2, radius=3):
    image = Image(width, height)
    outer = path.rounded(0, 0, width, height, radius)
    inner = path.rounded(thick, thick, width - 2 * thick, height - 2 * thick, max(0, radius - thick))
    image.fill(outer + inner, colour, even_odd=True)
    return image


def primary_ring():
    """2 px dark, then a white line: seen on the accent fill."""
    image = ring(12, 12, ACCENT_PRESSED)
    image.fill(path.rounded(2, 2, 8, 8, 1) + path.rounded(3, 3, 6, 6, 0), SURFACE, even_odd=True)
    return image


def check_ring():
    """Around an 18 px box: 1 px white, then 2 px accent, 24 x 24 in all."""
    image = ring(24, 24, ACCENT, 2, 6)
    image.fill(path.rounded(2, 2, 20, 20, 4) + path.rounded(3, 3, 18, 18, 3), SURFACE, even_odd=True)
    return image


def thumb(colour):
    image = Image(8, 12)
    image.fill(path.rounded(0, 0, 8, 12, 4), colour)
    return image


def icon(name, size, colour, scale=1.0):
    image = Image(size, size)
    skin_icons.draw(image, name, 0, 0, colour, scale)
    return image


def tab(fill, top=None):
    """The head of a page; the chosen one is open below and has a bar on its upper edge."""
    image = Image(16, 32)
    if fill:
        image.fill(path.rounded(0, 0, 16, 32, 0), LINE if top else fill)
        image.fill(path.rounded(1, 1, 14, 31, 0), fill)
    if top:
        image.fill(path.rounded(0, 0, 16, 3, 0), top)
    return image


def buttons():
    for kind, looks, icons in (("Button", SECONDARY, ("Add", "Exit", "Close", "Zone", "Undo")),
                               ("Primary", PRIMARY, ("Save", "Open", "History")),
                               ("Danger", DANGEROUS, ("Remove",))):
        for state, look in looks.items():
            if kind != "Danger":
                yield kind + state, button(16, 25, look)
            for name in icons:
                yield kind + name + state, button(48, 25, look, name, (14, 5))
    for kind, name, looks in (("Icon", "Add", SECONDARY), ("Icon", "Remove", DANGEROUS), ("Icon", "Undo", SECONDARY),
                              ("Icon", "Redo", SECONDARY), ("Icon", "More", SECONDARY), ("Flat", "Close", FLAT)):
        for state, look in looks.items():
            yield kind + name + state, button(28, 25, look, name, (6, 5))


def tiles():
    chosen = (SELECTED, ACCENT, ACCENT_PRESSED)
    for name in ("Move", "AddPoint", "AddMultiPoint", "DeletePoint"):
        for state, look in [*SECONDARY.items(), ("Chosen", chosen)]:
            yield "Tool" + name + state, button(64, 60, look, name, (20, 10))
    yield "TileChosen", button(16, 25, chosen)
    for name in ("Previous10", "Previous", "Next", "Next10"):
        for state, look in SECONDARY.items():
            yield "Step" + name + state, button(40, 60, look, name, (12, 14))


def tabs():
    for state, look in (("Normal", (None,)), ("Hover", (HOT,)), ("Inactive", (WINDOW, LINE)), ("Chosen", (SURFACE, ACCENT))):
        yield "Tab" + state, tab(*look)


def fields():
    for state in FIELD:
        yield "Combo" + state, combo(state)
        fill, edge = FIELD[state]
        if state != "Click":
            yield "Edit" + state, button(16, 25, (fill, edge, None))
    for state, colour in (("Normal", SURFACE), ("Selected", SELECTED), ("Hover", HOT)):
        yield "ComboItem" + state, flat(colour)
    for state in ("Normal", "Hover", "Click", "Inactive"):
        yield "Option" + state, box(Image(18, 18), 0, 0, state)
    for state in BOX:
        yield "Check" + state, box(Image(44, 25), 0, 4, state)
        yield "CheckFirst" + state, flag_check(state)


def parts():
    yield "FocusRing", ring(12, 12, ACCENT)
    yield "FocusRingPrimary", primary_ring()
    yield "FocusRingCheck", check_ring()
    for state, colour in THUMB.items():
        yield "ScrollThumb" + state, thumb(colour)
    card = Image(12, 12)
    framed(card, 0, 0, 12, 12, SURFACE, LINE, 4)
    yield "Card", card
    notice = Image(12, 12)
    framed(notice, 0, 0, 12, 12, HOT, ACCENT)
    yield "Notice", notice
    for name in ("Mark", "Note", "History"):
        yield name, icon(name, 16, ACCENT)
    for name in ("History", "Gear", "Book", "Tick", "Open"):
        for state in ("Normal", "Inactive"):
            yield "Menu" + name + state, icon(name, 16, SECONDARY[state][2])
    for name, piece in (("With", "Add"), ("Without", "Remove"), ("Other", "Note")):
        yield "Version" + name, icon(piece, 16, MUTED)
    cap = Image(12, 12)
    framed(cap, 0, 0, 12, 12, EDGE, EDGE)
    cap.fill(path.rounded(1, 1, 10, 9, 2), SURFACE)
    yield "KeyCap", cap
    yield "Question", icon("Question", 32, QUESTION)
    yield "EmptyScenes", icon("Open", 32, OFF, 2.0)


def template(boxes, lines):
    """The branches of a new scene, the first one filled."""
    image = Image(112, 64)
    for line in lines:
        image.fill(path.stroke(path.parse(line), 1.5, "butt"), MUTED)
    for number, (x, y) in enumerate(boxes):
        framed_box = path.rounded(x - 0.75, y - 0.75, 23.5, 15.5, 2.75)
        image.fill(framed_box, EDGE if number else ACCENT)
        image.fill(path.rounded(x + 0.75, y + 0.75, 20.5, 12.5, 1.25), SURFACE if number else ACCENT)
    return image


def templates():
    yield "TemplateEmpty", template([(45, 25)], [])
    yield "TemplateLinear", template([(8, 25), (45, 25), (82, 25)], ["M26 32H86"])
    yield "TemplateQuestion", template(
        [(24, 25), (66, 5), (66, 25), (66, 45)],
        ["M46 32C58 32 54 12 66 12", "M46 32H66", "M46 32C58 32 54 52 66 52"])


def images():
    """Every image as (file name, Image)."""
    for group in (buttons, tiles, tabs, fields, parts, templates):
        for name, image in group():
            yield name + ".png", image


def check():
    wrong = [f"{name}: differs from its description" for name, data in program_icon.files(ACCENT, SURFACE)
             if (ICON_FOLDER / name).read_bytes() != data]
    wanted = set()
    for name, image in images():
        wanted.add(name)
        file = FOLDER / name
        try:
            stored = png.decode(file.read_bytes())
        except (OSError, ValueError) as error:
            wrong.append(f"{name}: {error}")
            continue
        if stored != (image.width, image.height, image.rgba()):
            wrong.append(f"{name}: differs from its description")
    wrong += [f"{file.name}: not drawn by this script" for file in sorted(FOLDER.glob("*.png"))
              if file.name not in wanted]
    print("\n".join(wrong) if wrong else f"{len(wanted)} images are as described")
    return 1 if wrong else 0


def main(arguments):
    if arguments[:1] == ["--check"]:
        return check()
    if arguments[:1] == ["--sheet"] and len(arguments) == 2:
        skin_sheet.write(images(), arguments[1])
        return 0
    if arguments[:1] == ["--setup"] and len(arguments) == 2:
        for name, data in program_icon.setup_pictures(ACCENT, SURFACE):
            (pathlib.Path(arguments[1]) / name).write_bytes(data)
        return 0
    if arguments:
        print(__doc__)
        return 2
    FOLDER.mkdir(parents=True, exist_ok=True)
    count = 0
    for name, image in images():
        (FOLDER / name).write_bytes(png.encode(image.width, image.height, image.rgba()))
        count += 1
    ICON_FOLDER.mkdir(parents=True, exist_ok=True)
    for name, data in program_icon.files(ACCENT, SURFACE):
        (ICON_FOLDER / name).write_bytes(data)
    print(f"{count} images in {FOLDER}, the icon in {ICON_FOLDER}")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
