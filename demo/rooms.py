"""The side views of the fire drill: the office with the burning bin, the lift and the way out."""

import math

import figures
from figures import Place, area, limb
from vector import path
from vector.canvas import Frame, Rows, gradient


def ease(time, start, end):
    """0 before start, 1 after end, smooth between."""
    share = min(1.0, max(0.0, (time - start) / (end - start)))
    return share * share * (3 - 2 * share)


class Room:
    """Wall, floor and static objects, drawn once; each picture starts from a copy."""

    FRAMES = 75

    def __init__(self, width, height):
        self.width, self.height = width, height
        self.ground = height * 0.84
        self.scale = height * 0.84 / 2.85
        self.still = Frame(width, height)
        self.furnish()

    def place(self, x, depth=0.0, mirrored=False):
        """A figure's ground point `x` metres from the left; `depth` moves it into the room."""
        return Place(x * self.scale, self.ground + depth * self.scale, self.scale, mirrored)

    def block(self, frame, x0, y0, x1, y1, paint, opacity=1.0):
        area(frame, self.place(0), [(x0, y0), (x1, y0), (x1, y1), (x0, y1)], paint, opacity)

    def shell(self, wall_top, wall_bottom, floor_top, floor_bottom):
        wall = gradient((0, wall_top), (self.ground, wall_bottom))
        floor = gradient((self.ground, floor_top), (self.height, floor_bottom))
        self.still.fill(path.rounded(0, 0, self.width, self.height, 0),
                        Rows(self.height, lambda y: wall(y) if y < self.ground else floor(y)))
        self.block(self.still, 0, 0, 9, 0.1, "#5F686C")

    def window(self, x, width):
        self.block(self.still, x, 1.15, x + width, 2.3, "#F4F4EE")
        self.block(self.still, x + 0.06, 1.21, x + width - 0.06, 2.24, "#B9D6E2")
        place = self.place(x)
        area(self.still, place, [(0.06, 1.21), (0.5 * width, 1.21), (width * 0.5 + 0.4, 2.24), (0.46, 2.24)], "#FFFFFF", 0.28)
        self.block(self.still, x + width / 2 - 0.025, 1.21, x + width / 2 + 0.025, 2.24, "#F4F4EE")

    def shadow(self, frame, x, radius=0.34, depth=0.06):
        place = self.place(x, depth)
        frame.fill(path.ellipse(place.x, place.y, radius * self.scale, 0.055 * self.scale), "#20262A", 0.28)


class Office(Room):
    """A worker brings the extinguisher and puts the bin out."""

    BIN = 3.95

    def furnish(self):
        self.shell("#DDE3E4", "#C3CBCD", "#8A8177", "#6E665E")
        frame = self.still
        self.window(0.5, 1.3)
        self.window(2.15, 1.3)
        self.block(frame, 0, 0.1, 9, 0.5, "#AEB9BC")
        self.block(frame, 4.45, 0.0, 4.5, 0.74, "#6B4E33")
        self.block(frame, 4.3, 0.72, 6, 0.78, "#8A6643")
        self.block(frame, 4.62, 0.78, 4.68, 0.9, "#3A4147")
        self.block(frame, 4.42, 0.86, 4.95, 1.22, "#2B3238")
        self.block(frame, 4.45, 0.89, 4.95, 1.19, "#5E8DAA")
        self.block(frame, 3.95, 1.55, 4.85, 2.15, "#F2EFE4")
        for y, end in ((2.02, 4.7), (1.9, 4.7), (1.78, 4.45)):
            self.block(frame, 4.08, y, end, y + 0.035, "#9AA09C")

    def _state(self, number):
        time = number / 25
        walk = ease(time, -0.4, 1.75)
        x = -0.35 + walk * 2.75
        return time, x, 1 - ease(time, 1.35, 1.8), ease(time, 1.7, 2.0), 1 - 0.75 * ease(time, 2.0, 3.0)

    def _hand(self, frame, number):
        time, x, stride, aim, _ = self._state(number)
        reach = 0.35 + 0.85 * aim
        return figures.walker(frame, self.place(x, 0.06), figures.WORKER, x * 2 * math.pi / 1.55, stride, reach, vest=True)

    def draw(self, number):
        frame = Frame(self.width, self.height, self.still)
        time, x, _, aim, size = self._state(number)
        fire = self.place(self.BIN, 0.02)
        figures.smoke(frame, fire.x, fire.y - 0.75 * fire.scale, time + 2, fire.scale * 0.8, 14, "#3E4246", 1.0, -0.18, 0.26)
        self.shadow(frame, self.BIN, 0.3, 0.02)
        burning = Place(fire.x, fire.y - 0.46 * fire.scale, fire.scale)
        figures.soft(frame, burning.x, burning.y - 0.3 * fire.scale, 0.9 * fire.scale * size, "#FFB347", 0.34, 16)
        figures.flame(frame, burning, time, 1.1 * size)
        area(frame, fire, [(-0.2, 0), (0.2, 0), (0.26, 0.46), (-0.26, 0.46)], "#5B656B")
        for left in (-0.14, -0.03, 0.08):
            area(frame, fire, [(left, 0.03), (left + 0.05, 0.03), (left * 1.25 + 0.055, 0.42), (left * 1.25, 0.42)], "#495258")
        area(frame, fire, [(-0.28, 0.43), (0.28, 0.43), (0.28, 0.49), (-0.28, 0.49)], "#707B81")
        self.shadow(frame, x)
        hand = self._hand(frame, number)
        holder = self.place(x, 0.06)
        px, py = holder(*hand)
        bottle = Place(px + 0.02 * self.scale, py + 0.56 * self.scale, self.scale * 0.95)
        if aim > 0.9:
            self._spray(frame, px, py, fire, time)
        figures.extinguisher(frame, bottle)
        return frame

    def _spray(self, frame, px, py, fire, time):
        start = (px + 0.14 * self.scale, py)
        goal = (fire.x - 0.05 * self.scale, fire.y - 0.62 * self.scale)
        for step in range(16):
            share = (step / 16 + time * 1.7) % 1.0
            wave = math.sin(step * 2.1 + time * 8) * 0.06 * share * self.scale
            figures.soft(frame, start[0] + (goal[0] - start[0]) * share, start[1] + (goal[1] - start[1]) * share + wave,
                         (0.04 + 0.2 * share) * self.scale, "#F7FAFB", 0.75 - 0.4 * share, 3)

    def fire_zone(self, number):
        time, _, _, _, size = self._state(number)
        fire = self.place(self.BIN, 0.02)
        left, right, top = figures.flame(Frame(1, 1), Place(0, 0, 1), time, 1.1 * size)
        up = lambda x, y: fire(x, 0.46 + y)
        return [up(left - 0.06, 0.1), up(left * 0.6, top * 0.7), up(0, top + 0.08), up(right * 0.6, top * 0.7), up(right + 0.06, 0.1)]

    def bottle_zone(self, number):
        _, x, _, _, _ = self._state(number)
        px, py = self.place(x, 0.06)(*self._hand(Frame(1, 1), number))
        corner = lambda dx, dy: (px + dx * self.scale, py + dy * self.scale)
        return [corner(-0.2, -0.08), corner(0.18, -0.08), corner(0.18, 0.6), corner(-0.2, 0.6)]


class Lift(Room):
    """Lift doors open, and smoke comes out; the visitor stops and steps back."""

    def furnish(self):
        self.shell("#D8D4C8", "#BDB9AE", "#7E858A", "#62696E")
        frame = self.still
        self.block(frame, 1.75, 0, 3.75, 2.42, "#8C959A")
        self.block(frame, 1.87, 0, 3.63, 2.3, "#2A3034")
        self.block(frame, 3.95, 1.0, 4.15, 1.36, "#DDE0E0")
        for y in (1.1, 1.26):
            frame.fill(path.circle(*self.place(4.05)(0, y), 0.045 * self.scale), "#6B757B")
        self.block(frame, 0.35, 1.3, 1.25, 2.0, "#F3F0E6")
        place = self.place(0.8)
        frame.fill(path.circle(*place(0, 1.68), 0.24 * self.scale), "#C8372D")
        frame.fill(path.circle(*place(0, 1.68), 0.185 * self.scale), "#F3F0E6")
        area(frame, place, [(-0.07, 1.55), (0.07, 1.55), (0.07, 1.8), (-0.07, 1.8)], "#39424A")
        limb(frame, place, [(-0.14, 1.54), (0.14, 1.82)], 0.045, "#C8372D")
        self.block(frame, 0.5, 1.36, 1.1, 1.4, "#8B908D")

    def draw(self, number):
        frame = Frame(self.width, self.height, self.still)
        time = number / 25
        gap = 0.62 * ease(time, 0.7, 2.2)
        inside = self.place(2.75, 0)
        self.block(frame, 1.87, 0, 3.63, 2.3, "#3A3430")
        figures.soft(frame, inside.x, inside.y - 0.7 * self.scale, 1.0 * self.scale, "#F08A3A", 0.15 + 0.5 * gap, 16)
        figures.smoke(frame, inside.x, inside.y - 0.2 * self.scale, time + 1, self.scale, 16, "#23272A", 1.0, 0.1, 0.4)
        for side in (-1, 1):
            edge = 2.75 + side * gap
            far = 2.75 + side * 0.88
            self.block(frame, min(edge, far), 0, max(edge, far), 2.3, "#A9B2B6")
            self.block(frame, min(edge, edge + side * 0.05), 0, max(edge, edge + side * 0.05), 2.3, "#7D878C")
        self.block(frame, 2.45, 2.5, 3.05, 2.72, "#22282C")
        if number // 6 % 2:
            place = self.place(2.75)
            area(frame, place, [(-0.1, 2.55), (0.1, 2.55), (0, 2.68)], "#FF5A3C")
        x = 0.15 + 1.05 * ease(time, -0.5, 1.5) - 0.35 * ease(time, 1.9, 2.9)
        walking = (1 - ease(time, 1.0, 1.5)) + 0.6 * ease(time, 1.9, 2.1) * (1 - ease(time, 2.7, 2.95))
        self.shadow(frame, x)
        figures.walker(frame, self.place(x, 0.06), figures.VISITOR, x * 2 * math.pi / 1.55, walking,
                       1.9 * ease(time, 1.5, 1.9) if time > 1.4 else None)
        if gap > 0.02:
            figures.smoke(frame, inside.x, inside.y - 1.3 * self.scale, time * 1.2, self.scale * (0.2 + 1.3 * gap), 14,
                          "#4B5054", 0.6, -0.7, 0.34)
        return frame


class Exit(Room):
    """Three people walk in a row to the open exit."""

    PEOPLE = ((figures.WORKER, 0.0), (figures.CLERK, -1.0), (figures.VISITOR, -1.95))

    def furnish(self):
        self.shell("#D3DBD3", "#B6C1B9", "#868B86", "#686D69")
        frame = self.still
        self.block(frame, 0, 0.92, 9, 1.04, "#8FA79B")
        self.window(0.7, 1.2)
        self.block(frame, 3.55, 0, 4.75, 2.28, "#4B5A55")
        self.block(frame, 3.65, 0, 4.65, 2.2, "#DCEFF6")
        self.block(frame, 3.65, 0, 4.65, 0.75, "#9CC58C")
        place = self.place(4.15)
        frame.fill(path.circle(*place(0.2, 0.95), 0.27 * self.scale), "#6FA267")
        frame.fill(path.circle(*place(0.38, 1.02), 0.2 * self.scale), "#7FB175")
        area(frame, self.place(3.65), [(0.35, 0), (0.75, 0), (0.6, 0.75), (0.52, 0.75)], "#D7D2C0")
        area(frame, self.place(4.65), [(0, 0), (0.32, -0.12), (0.32, 2.1), (0, 2.2)], "#5E8F76")
        area(frame, self.place(4.65), [(0.05, 0.95), (0.24, 0.92), (0.24, 0.98), (0.05, 1.01)], "#D9DEDC")
        area(frame, self.place(3.65), [(-0.5, -0.2), (1.0, -0.2), (1.0, 0), (0, 0)], "#FFFFFF", 0.2)
        x, y = place(-0.42, 2.62)
        figures.exit_sign(frame, x, y, 0.84 * self.scale, 0.21 * self.scale)
        for arrow in (1.3, 2.4):
            lane = self.place(arrow, 0.3)
            limb(frame, lane, [(0, 0), (0.45, 0)], 0.045, "#3FA46A", 0.75)
            limb(frame, lane, [(0.33, 0.06), (0.47, 0), (0.33, -0.06)], 0.045, "#3FA46A", 0.75)

    def draw(self, number):
        frame = Frame(self.width, self.height, self.still)
        time = number / 25
        figures.smoke(frame, 0.1 * self.scale, 0.55 * self.scale, time + 1, self.scale * 1.1, 14, "#55595C", 0.15, 0.5, 0.26)
        for look, start in reversed(self.PEOPLE):
            x = 1.75 + start + time * 0.95
            size = 1 - 0.12 * ease(x, 3.6, 4.4)
            self.shadow(frame, x)
            place = self.place(x, 0.06 - 0.05 * ease(x, 3.6, 4.4))
            place.scale *= size
            figures.walker(frame, place, look, (x + start) * 2 * math.pi / 1.55, 1.0, None, look is figures.WORKER)
        return frame
