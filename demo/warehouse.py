"""The forklift scene: an aisle with racks, a truck with a pallet, and a person at the crossing."""

import math

import figures
from figures import area, disc, limb
from rooms import Room, ease
from vector.canvas import Frame


class Warehouse(Room):
    FRAMES = 75

    def furnish(self):
        self.shell("#C7CDD3", "#AEB6BD", "#9A9EA1", "#7A7E82")
        frame = self.still
        colours = ("#B98A52", "#A87A45", "#C79B66", "#6E8FA6", "#B0813F")
        for bay in range(5):
            x = bay * 1.25 - 0.35
            for level, y in enumerate((0.06, 0.98, 1.9)):
                for box in range(2):
                    left = x + 0.12 + box * 0.56
                    tall = 0.5 + 0.14 * ((bay * 3 + level + box) % 3)
                    self.block(frame, left, y, left + 0.48, y + tall, colours[(bay + 2 * level + box) % 5])
                    self.block(frame, left + 0.19, y + tall - 0.16, left + 0.29, y + tall, "#EADCC0", 0.8)
                self.block(frame, x, y - 0.08, x + 1.25, y, "#D0703A")
            self.block(frame, x - 0.05, 0, x + 0.05, 2.85, "#33566E")
        self.block(frame, 0, 0, 9, 2.85, "#FFFFFF", 0.12)
        for offset, height in ((0.1, 0.05), (0.42, 0.06)):
            place = self.place(0, offset)
            area(frame, place, [(0, 0), (9, 0), (9, height), (0, height)], "#E3B93A")
        for stripe in range(6):
            place = self.place(3.72 + stripe * 0.16, 0.36)
            area(frame, place, [(0, 0), (0.08, 0), (0.14, 0.2), (0.06, 0.2)], "#F4F4EF")

    def draw(self, number):
        frame = Frame(self.width, self.height, self.still)
        time = number / 25
        x = -0.6 + 2.75 * ease(time, -0.6, 2.5)
        person = 5.1 - 0.55 * ease(time, 0.0, 1.2)
        self.shadow(frame, person, 0.3)
        figures.walker(frame, self.place(person, 0.1, mirrored=True), figures.CLERK, -person * 2 * math.pi / 1.55,
                       1 - ease(time, 0.8, 1.2), 2.2 * ease(time, 1.2, 1.7) if time > 1.1 else None, vest=True)
        self.shadow(frame, x + 0.45, 1.3, 0.16)
        self._truck(frame, self.place(x, 0.14), x, number)
        return frame

    def _truck(self, frame, place, x, number):
        area(frame, place, [(1.02, 0.1), (1.02, 0.16), (1.95, 0.16), (1.95, 0.1)], "#30363B")
        area(frame, place, [(1.08, 0.16), (1.92, 0.16), (1.92, 0.27), (1.08, 0.27)], "#8C6437")
        area(frame, place, [(1.12, 0.27), (1.88, 0.27), (1.88, 0.86), (1.12, 0.86)], "#C2945B")
        area(frame, place, [(1.44, 0.62), (1.56, 0.62), (1.56, 0.86), (1.44, 0.86)], "#EADCC0")
        limb(frame, place, [(0.96, 0.12), (0.96, 1.95)], 0.075, "#3C444A")
        limb(frame, place, [(0.86, 0.25), (0.86, 1.8)], 0.05, "#59646B")
        area(frame, place, [(-0.42, 0.24), (0.8, 0.24), (0.8, 0.5), (0.3, 0.66), (-0.16, 0.66), (-0.42, 0.8)], "#E9A51F")
        area(frame, place, [(-0.46, 0.3), (-0.12, 0.3), (-0.12, 0.86), (-0.36, 0.92), (-0.46, 0.8)], "#C9851A")
        self._driver(frame, place)
        limb(frame, place, [(-0.3, 0.86), (-0.22, 1.86), (0.52, 1.86), (0.72, 0.5)], 0.05, "#2C3338")
        for wheel, radius in ((-0.2, 0.2), (0.58, 0.23)):
            disc(frame, place, wheel, radius, radius, "#23282C")
            disc(frame, place, wheel, radius, radius * 0.5, "#AEB6BB")
            for spoke in range(5):
                turn = -x / radius + spoke * 2 * math.pi / 5
                disc(frame, place, wheel + math.cos(turn) * radius * 0.32, radius + math.sin(turn) * radius * 0.32,
                     radius * 0.08, "#4A5359")
        bright = 0.5 + 0.5 * math.cos(number * 2 * math.pi / 15)
        px, py = place(0.1, 1.98)
        figures.soft(frame, px, py, (0.18 + 0.3 * bright) * self.scale, "#FFB02E", 0.2 + 0.6 * bright, 12)
        area(frame, place, [(0.04, 1.88), (0.16, 1.88), (0.14, 2.02), (0.06, 2.02)], "#F08A1C")

    def _driver(self, frame, place):
        limb(frame, place, [(0.0, 0.8), (0.28, 0.78), (0.42, 0.5)], 0.14, "#39485A")
        limb(frame, place, [(-0.02, 0.8), (-0.05, 1.2)], 0.26, "#3F7F8C")
        limb(frame, place, [(-0.03, 1.2), (0.16, 1.02), (0.4, 1.06)], 0.09, "#2F636E")
        limb(frame, place, [(0.44, 0.62), (0.38, 1.08)], 0.03, "#2C3338")
        disc(frame, place, 0.0, 1.48, 0.125, "#C68E66")
        cap = [(0.13 * math.cos(a), 1.51 + 0.13 * math.sin(a)) for a in (math.radians(d) for d in range(0, 181, 10))]
        area(frame, place, cap + [(-0.13, 1.49), (0.2, 1.49)], "#F2D23C")
