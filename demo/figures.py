"""People and things of the demo clips. Every figure is drawn in metres (x right, y up from the
ground) through a `place` that turns them into pixels."""

import math

from vector import path


class Place:
    """Metres to pixels: `x`, `y` is where the figure's ground point stands, `scale` pixels a metre."""

    def __init__(self, x, y, scale, mirrored=False):
        self.x = x
        self.y = y
        self.scale = scale
        self.mirrored = mirrored

    def __call__(self, x, y):
        return (self.x + (-x if self.mirrored else x) * self.scale, self.y - y * self.scale)

    def points(self, pairs):
        return [self(x, y) for x, y in pairs]


def area(frame, place, pairs, paint, opacity=1.0):
    frame.fill([(place.points(pairs), True)], paint, opacity)


def limb(frame, place, pairs, width, paint, opacity=1.0):
    """A round-ended stroke along points in metres, `width` metres thick."""
    frame.fill(path.stroke([(place.points(pairs), False)], width * place.scale), paint, opacity)


def disc(frame, place, x, y, radius, paint, opacity=1.0):
    frame.fill(path.circle(*place(x, y), radius * place.scale, 40), paint, opacity)


def soft(frame, x, y, radius, colour, opacity, rings=4):
    """A blurred spot in pixels: rings of equal opacity inside one another."""
    for ring in range(rings):
        frame.fill(path.circle(x, y, radius * (1 - ring / (rings + 1)), 36), colour, opacity / rings, samples=2)


def _joint(start, angle, length):
    return (start[0] + math.sin(angle) * length, start[1] - math.cos(angle) * length)


def _leg(hip, phase, stride):
    thigh = math.radians(27) * stride * math.sin(phase)
    flex = math.radians(5) + math.radians(46) * stride * max(0.0, math.cos(phase))
    knee = _joint(hip, thigh, 0.43)
    ankle = _joint(knee, thigh - flex, 0.43)
    toe = _joint(ankle, thigh - flex + math.pi / 2 - 0.12, 0.15)
    return [hip, knee, ankle], [ankle, toe]


class Look:
    """Colours of a person."""

    def __init__(self, coat, coat_dark, trousers, hair, skin="#D9A57E", shoes="#2A2E33"):
        self.coat, self.coat_dark, self.trousers = coat, coat_dark, trousers
        self.hair, self.skin, self.shoes = hair, skin, shoes


WORKER = Look("#E08A1E", "#B96D12", "#39485A", "#3B2A20")
VISITOR = Look("#3F7F8C", "#2F636E", "#4A4550", "#6B4A2B", "#C68E66")
CLERK = Look("#7B5EA3", "#614A83", "#2F3A46", "#1F1B1A", "#8D5B3C")


def walker(frame, place, look, phase, stride=1.0, reach=None, vest=False):
    """A person seen from the side, walking to the right. `phase` turns once for two steps, `stride`
    0 stands still. `reach` is the angle (radians, 0 down, forward positive) of a held-out arm.
    Returns the hand's place in metres."""
    near, near_foot = _leg((0, 0), phase, stride)
    far, far_foot = _leg((0, 0), phase + math.pi, stride)
    lift = -min(y for _, y in near + near_foot + far + far_foot) + 0.035
    raised = lambda pairs: [(x, y + lift) for x, y in pairs]
    hip = (0, lift)
    shoulder = (0.02, lift + 0.5)
    swing = math.radians(24) * stride * math.sin(phase)

    def arm(angle, bend, colour):
        elbow = _joint(shoulder, angle, 0.27)
        hand = _joint(elbow, angle + bend, 0.25)
        limb(frame, place, [shoulder, elbow, hand], 0.105, colour)
        disc(frame, place, *hand, 0.058, look.skin)
        return hand

    arm(swing, 0.35, look.coat_dark)
    for leg, foot, dark in ((far, far_foot, True), (near, near_foot, False)):
        limb(frame, place, raised(leg), 0.15, _darker(look.trousers) if dark else look.trousers)
        limb(frame, place, raised(foot), 0.085, look.shoes)
    area(frame, place, [(-0.13, lift - 0.06), (0.13, lift - 0.06), (0.155, lift + 0.5), (0.09, lift + 0.6),
                        (-0.09, lift + 0.6), (-0.15, lift + 0.48)], look.coat)
    if vest:
        for height in (0.16, 0.3):
            area(frame, place, [(-0.14, lift + height), (0.14, lift + height), (0.145, lift + height + 0.05),
                                (-0.145, lift + height + 0.05)], "#F4E9A8")
    limb(frame, place, [(0.01, lift + 0.6), (0.02, lift + 0.68)], 0.1, look.skin)
    disc(frame, place, 0.035, lift + 0.79, 0.125, look.skin)
    area(frame, place, [(0.15, lift + 0.8), (0.185, lift + 0.75), (0.14, lift + 0.74)], look.skin)
    head = [(0.035 + 0.135 * math.cos(a), lift + 0.8 + 0.135 * math.sin(a))
            for a in (math.radians(d) for d in range(48, 226, 8))]
    area(frame, place, head + [(-0.02, lift + 0.8), (0.05, lift + 0.86)], look.hair)
    if reach is None:
        return arm(-swing, 0.35, look.coat)
    return arm(reach, 0.25, look.coat)


def _darker(colour, share=0.78):
    return "#" + "".join(f"{int(int(colour[i:i + 2], 16) * share):02X}" for i in (1, 3, 5))


def away(frame, place, look, phase):
    """A person seen from behind, walking away."""
    step = math.sin(phase)
    bob = 0.02 * abs(math.cos(phase))
    for side in (-1, 1):
        lift = max(0.0, 0.13 * step * side)
        knee = (side * 0.1, 0.46 + lift * 0.6 + bob)
        limb(frame, place, [(side * 0.085, 0.88 + bob), knee, (side * 0.1, 0.1 + lift)], 0.15,
             look.trousers if lift == 0 else _darker(look.trousers))
        limb(frame, place, [(side * 0.1, 0.06 + lift), (side * 0.12, 0.04 + lift)], 0.1, look.shoes)
        hand = 0.88 + 0.05 * step * side
        limb(frame, place, [(side * 0.2, 1.36 + bob), (side * 0.27, 1.12), (side * 0.25, hand)], 0.1, look.coat_dark)
        disc(frame, place, side * 0.25, hand - 0.03, 0.055, look.skin)
    area(frame, place, [(-0.16, 0.84 + bob), (0.16, 0.84 + bob), (0.235, 1.38 + bob), (0.12, 1.46 + bob),
                        (-0.12, 1.46 + bob), (-0.235, 1.38 + bob)], look.coat)
    limb(frame, place, [(0, 1.44 + bob), (0, 1.52 + bob)], 0.11, look.skin)
    disc(frame, place, 0, 1.63 + bob, 0.13, look.hair)


def extinguisher(frame, place):
    """A red extinguisher 0.62 m high that stands on its ground point."""
    limb(frame, place, [(0.02, 0.56), (-0.14, 0.55), (-0.17, 0.42), (-0.165, 0.1)], 0.035, "#24282B")
    frame.fill(path.rounded(*place(-0.105, 0.46) if not place.mirrored else place(0.105, 0.46),
                            0.21 * place.scale, 0.46 * place.scale, 0.07 * place.scale), "#B3261F")
    for left, width, colour in ((-0.075, 0.05, "#D5463D"), (0.055, 0.05, "#8E1A16")):
        area(frame, place, [(left, 0.05), (left + width, 0.05), (left + width, 0.42), (left, 0.42)], colour)
    area(frame, place, [(-0.085, 0.16), (0.085, 0.16), (0.085, 0.32), (-0.085, 0.32)], "#F3F0E8")
    for height, right in ((0.28, 0.05), (0.24, 0.05), (0.2, 0.015)):
        limb(frame, place, [(-0.055, height), (right, height)], 0.014, "#8C2A24")
    area(frame, place, [(-0.045, 0.45), (0.045, 0.45), (0.04, 0.56), (-0.04, 0.56)], "#3A3F42")
    limb(frame, place, [(-0.01, 0.58), (0.11, 0.61)], 0.035, "#24282B")
    limb(frame, place, [(0.0, 0.545), (0.1, 0.53)], 0.025, "#24282B")


def flame(frame, place, time, size=1.0):
    """A fire on its ground point. Returns (left, right, top) in metres."""
    top = 0.0
    for colour, share in (("#E2571E", 1.0), ("#F5992B", 0.68), ("#FCE08A", 0.38)):
        points = []
        for i in range(25):
            t = i / 24
            lean = 0.05 * math.sin(time * 5.1 + t * 3) * math.sin(math.pi * t)
            tongue = 0.55 + 0.45 * math.cos(6 * math.pi * (t - 0.5))
            height = (0.18 + 0.42 * tongue * (0.8 + 0.2 * math.sin(time * 9 + i * 0.7))) * math.sin(math.pi * t) ** 0.7
            points.append(((t - 0.5) * 0.5 * size * share + lean * size, height * 1.35 * size * share))
        top = max(top, max(y for _, y in points))
        area(frame, place, points, colour)
    return -0.25 * size, 0.25 * size, top


def smoke(frame, x, y, time, scale, count=14, colour="#4A4F55", rise=1.0, drift=0.35, opacity=0.2):
    """Puffs that rise from a place in pixels and fade; the same for the same time."""
    for puff in range(count):
        age = (time * 0.33 + puff / count) % 1.0
        sway = math.sin(puff * 2.4 + age * 4) * 0.25
        soft(frame, x + (sway + drift * age * 2) * scale * (0.4 + age), y - rise * age * 2.1 * scale,
             (0.14 + 0.5 * age) * scale, colour, opacity * math.sin(math.pi * age) ** 0.8, 9)


def exit_sign(frame, left, top, width, height):
    """Green board with an arrow to a door, in pixels."""
    frame.fill(path.rounded(left, top, width, height, height * 0.1), "#1E8A4C")
    unit = height / 22
    line = lambda *points: path.stroke([([(left + x * width / 88, top + y * unit) for x, y in points], False)], 2.4 * unit)
    frame.fill(path.union(line((16, 11), (46, 11)), line((38, 5), (47, 11), (38, 17))), "#E9FFF2")
    frame.fill(path.union(line((62, 5), (74, 5), (74, 17), (62, 17), (62, 5))), "#E9FFF2")
