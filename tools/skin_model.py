"""A skin folder as data: its layouts with the defaults applied, and its images."""

import pathlib
import re
import xml.etree.ElementTree as tree

from vector import png

IMAGE_ATTRIBUTE = re.compile(r"image$")
_PART = re.compile(r"(\w+)\s*=\s*'([^']*)'")


class Control:
    """One element of a layout. `rect` is (x, y, width, height) in the window: its "pos", or without one
    that of its container, with its own "height"; None when no container has one."""

    def __init__(self, element, parent, defaults):
        self.kind = element.tag
        self.parent = parent
        self.own = dict(element.attrib)
        self.attributes = {**defaults.get(self.kind, {}), **self.own}
        self.rect = None
        place = numbers(self.own.get("pos", ""))
        if place and len(place) == 4:
            x, y = parent.rect[:2] if parent and parent.rect else (0, 0)
            self.rect = (x + place[0], y + place[1], place[2], place[3])
        elif parent and parent.rect:
            height = numbers(self.own.get("height", ""))
            self.rect = (*parent.rect[:3], height[0] if height else parent.rect[3])
        self.children = [Control(child, self, defaults) for child in element
                         if isinstance(child.tag, str) and child.tag != "Range"]
        self.ranges = [dict(child.attrib) for child in element.findall("Range")]

    @property
    def name(self):
        return self.own.get("name", "")

    def get(self, attribute, fallback=""):
        return self.attributes.get(attribute, fallback)

    def all(self):
        yield self
        for child in self.children:
            yield from child.all()


class Layout:
    """One layout file. ValueError when it is no XML with a Window at its root."""

    def __init__(self, file):
        self.file = file.name
        try:
            self.window = tree.parse(file).getroot()
        except tree.ParseError as error:
            raise ValueError(f"{file.name}: {error}") from error
        if self.window.tag != "Window":
            raise ValueError(f"{file.name}: the root is <{self.window.tag}>, not <Window>")
        size = self.window.get("size", "")
        if self.window.get("base"):
            base = Layout(file.parent / self.window.get("base"))
            size = size or base.window.get("size", "")
            self.window = base.window
        self.size = tuple(numbers(size) or ())
        self.design = tuple(numbers(self.window.get("size", "")) or ())
        self.fonts = self.window.findall("Font")
        self.defaults = {}
        for element in self.window.findall("Default"):
            values = dict(element.attrib)
            self.defaults[values.pop("class", "")] = values
        self.roots = [Control(child, None, self.defaults) for child in self.window
                      if child.tag not in ("Font", "Default")]

    def controls(self):
        for root in self.roots:
            yield from root.all()

    def named(self):
        return {control.name: control for control in self.controls() if control.name}

    def styled(self):
        """(description, kind, attributes) of every element that may name images or fonts."""
        yield "Window", "Window", dict(self.window.attrib)
        for font in self.fonts:
            yield "Font", "Font", dict(font.attrib)
        for kind, values in self.defaults.items():
            yield f"Default of {kind}", kind, values
        for control in self.controls():
            yield control.name or f"{control.kind} at {control.own.get('pos', '?')}", control.kind, control.own


class Skin:
    """The folder: layouts are read at once, images when asked for. With the shade "Dark", images and colours
    are those of that folder in it."""

    def __init__(self, folder, shade=""):
        self.layouts = pathlib.Path(folder)
        self.folder = self.layouts / shade
        self.images = sorted(file.name for file in self.folder.glob("*.png"))
        self.icons = {"icon": {}, "tint": {}, "color": {}, "scale": {}}  # the lines of Icons.txt, by their first two words
        table = self.folder / "Icons.txt"
        for line in table.read_text(encoding="utf-8").splitlines() if table.exists() else ():
            kind, *words = line.split() or ("",)
            if kind in self.icons:
                self.icons[kind].update({word: words for word in (words if kind == "scale" else words[:1])})
        self._pixels = {}

    def layout(self, name):
        return Layout(self.layouts / name)

    def colour(self, text):
        """As the function colour; a tone's name is that tone."""
        return colour(" ".join(self.icons["color"].get(text.strip(), ["", text])[1:]))

    def image(self, name):
        """(width, height, rgba); ValueError or OSError when it cannot be read."""
        if name not in self._pixels:
            self._pixels[name] = png.decode((self.folder / name).read_bytes())
        return self._pixels[name]

    def middle(self, attribute):
        """The colour (r, g, b, a) of the stretched part of an image attribute: where texts stand."""
        parts = image_parts(attribute)
        width, height, rgba = self.image(parts["file"])
        left, top, right, bottom = numbers(parts.get("corner", "0,0,0,0"))
        x = left + max(0, width - left - right) // 2 if "corner" in parts else 2
        y = top + max(0, height - top - bottom) // 2 if "corner" in parts else height - 4
        place = (min(y, height - 1) * width + min(x, width - 1)) * 4
        return tuple(rgba[place:place + 4])


def numbers(text):
    """The numbers of "1, 2,3", or None when it is something else."""
    try:
        return [int(part) for part in text.split(",")]
    except ValueError:
        return None


def image_parts(attribute):
    """The keys of file='a.png' corner='1,1,1,1' dest='...'; a plain value is the file."""
    return dict(_PART.findall(attribute)) if "=" in attribute else {"file": attribute.strip()}


def colour(text):
    """"#AARRGGBB" or "0xAARRGGBB" as (r, g, b, a); six digits are opaque; None for anything else."""
    match = re.fullmatch(r"\s*(?:#|0x)([0-9A-Fa-f]{6}|[0-9A-Fa-f]{8})\s*", text)
    if not match:
        return None
    value = int(match.group(1), 16)
    alpha = value >> 24 if len(match.group(1)) == 8 else 255
    return value >> 16 & 255, value >> 8 & 255, value & 255, alpha
