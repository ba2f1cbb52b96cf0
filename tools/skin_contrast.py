"""Contrast of every text that the layouts put on a fill: WCAG 2 ratio, from the colours and the
images themselves (https://www.w3.org/TR/WCAG21/#dfn-contrast-ratio)."""

from skin_model import image_parts

REQUIRED = 4.5
INK, TIP_INK, TIP_GROUND = "value", "ontip", "tip"

# State: (image attribute, text colour attribute); the first image and colour that exist are used.
STATES = {
    "normal": (("normalimage",), ("textcolor",)),
    "hover": (("hotimage", "normalimage"), ("hottextcolor", "textcolor")),
    "pressed": (("pushedimage", "hotimage", "normalimage"), ("pushedtextcolor", "hottextcolor", "textcolor")),
    "chosen": (("selectedimage",), ("selectedtextcolor", "textcolor")),
    "read only": (("disabledimage",), ("readonlytextcolor", "textcolor")),
}
ITEM_STATES = {
    "item": (("itembkimage",), ("itembkcolor",), ("itemtextcolor",)),
    "item, hover": (("itemhotimage",), ("itemhotbkcolor",), ("itemhottextcolor", "itemtextcolor")),
    "item, chosen": (("itemselectedimage",), ("itemselectedbkcolor",), ("itemselectedtextcolor", "itemtextcolor")),
}


def luminance(rgb):
    linear = [value / 255 / 12.92 if value <= 10 else ((value / 255 + 0.055) / 1.055) ** 2.4 for value in rgb[:3]]
    return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]


def ratio(first, second):
    high, low = sorted((luminance(first), luminance(second)), reverse=True)
    return (high + 0.05) / (low + 0.05)


def _first(control, attributes, fallback=""):
    return next((control.get(name) for name in attributes if control.get(name)), fallback)


def _over(top, below):
    share = top[3] / 255
    return tuple(round(a * share + b * (1 - share)) for a, b in zip(top[:3], below[:3])) + (255,)


def _ground(layout, skin, control):
    """What the controls painted before `control` leave at the middle of its left edge."""
    x, y, _, height = control.rect
    y += height // 2
    ground = _over(skin.colour(layout.window.get("bkcolor", "")) or (0, 0, 0, 0), (255, 255, 255, 255))
    for other in layout.controls():
        if other is control:
            break
        rect = other.rect or (0, 0, 0, 0)
        inside = rect[0] <= x < rect[0] + rect[2] and rect[1] <= y < rect[1] + rect[3]
        if not inside or other.get("visible") == "false" and not any(one is control for one in other.all()):
            continue  # hidden, unless the control is seen together with it
        fill = skin.colour(other.get("bkcolor"))
        if fill:
            ground = _over(fill, ground)
        if other.get("bkimage") and "corner" in image_parts(other.get("bkimage")):
            ground = _over(skin.middle(other.get("bkimage")), ground)
    return _over(skin.colour(control.get("bkcolor")) or (0, 0, 0, 0), ground)


def texts(layout, skin):
    """Yields (control, state, text colour, ground colour, ratio) for all texts of a layout."""
    tip = layout.defaults.get("ToolTip", {})
    ink, below = skin.colour(tip.get("textcolor", TIP_INK)), skin.colour(tip.get("bkcolor", TIP_GROUND))
    yield "ToolTip", "normal", ink, below, ratio(ink, below)
    for control in layout.controls():
        if control.rect is None or control.kind not in ("Label", "Text", "Button", "Option", "Edit", "Combo", "List"):
            continue
        ground = _ground(layout, skin, control)
        what = control.name or control.get("text")
        for state, (images, colours) in STATES.items():
            if control.kind == "List" or state == "read only" and control.get("readonly") != "true":
                continue
            image = _first(control, images)
            if state != "normal" and not image:
                continue
            ink = skin.colour(_first(control, colours, INK))
            below = _over(skin.middle(image), ground) if image else ground
            yield what, state, ink, below, ratio(ink, below)
        if control.kind in ("Combo", "List"):
            for state, (images, fills, colours) in ITEM_STATES.items():
                # The rows that the program puts into a list hold texts.
                rows = layout.defaults.get("Text", {}) if control.kind == "List" else {}
                ink = skin.colour(_first(control, colours, rows.get("textcolor", INK)))
                image, fill = _first(control, images), _first(control, fills, "surface")
                below = skin.middle(image) if image else skin.colour(fill)
                yield what, state, ink, below, ratio(ink, below)
