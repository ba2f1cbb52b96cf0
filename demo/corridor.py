"""The corridor of the fire drill, seen by a camera that walks slowly forward."""

import math

import figures
from vector import path
from vector.canvas import Columns, Frame, Rows, mix, rgb

HALF, HEIGHT, EYE, END = 2.1, 2.75, 1.5, 15.0
FRAMES = 100
_NEAR = 0.25


class Camera:
    """One-point perspective; `z` metres into the corridor."""

    def __init__(self, width, height, z):
        self.width, self.height, self.z = width, height, z
        self.focus = width * 0.62
        self.middle = (width / 2, height * 0.46)

    def depth(self, z):
        return max(_NEAR, z - self.z)

    def __call__(self, x, y, z):
        scale = self.focus / self.depth(z)
        return self.middle[0] + x * scale, self.middle[1] - (y - EYE) * scale

    def ground(self, x, z, height=0.0):
        """A figure's position, as a Place."""
        return figures.Place(*self(x, height, z), self.focus / self.depth(z))


def camera_at(number, width, height):
    """Eases in and out over the clip."""
    share = number / (FRAMES - 1)
    return Camera(width, height, 2.3 * share * share * (3 - 2 * share))


class Corridor:
    """Paints of one picture size; shading depends on the distance only, so it is made once."""

    def __init__(self, width, height):
        self.width, self.height = width, height
        still = Camera(width, height, 0)
        cx, cy = still.middle
        at_x = lambda x: still.focus * HALF / max(1.0, abs(x - cx))
        floor = lambda y: still.focus * EYE / max(1.0, y - cy)
        roof = lambda y: still.focus * (HEIGHT - EYE) / max(1.0, cy - y)
        fade = lambda near, far: (lambda z: mix(rgb(far), rgb(near), math.exp(-z / 6.0)))
        wall, rail = fade("#E4E2DA", "#9DA3A3"), fade("#6F97A6", "#4C6570")
        self.wall = Columns(width, lambda x: wall(at_x(x)))
        self.rail = Columns(width, lambda x: rail(at_x(x)))
        ground = fade("#4E565B", "#939A9C")
        self.floor = Rows(height, lambda y: ground(floor(y)))
        ceiling = fade("#8B9192", "#BCC1C0")
        self.ceiling = Rows(height, lambda y: ceiling(roof(y)))

    def draw(self, number):
        camera = camera_at(number, self.width, self.height)
        frame = Frame(self.width, self.height)
        self._shell(frame, camera)
        self._end(frame, camera, number)
        self._doors(frame, camera)
        self._things(frame, camera, number)
        return frame

    def _shell(self, frame, camera):
        w, h = self.width, self.height
        corners = [camera(x, y, END) for x, y in ((-HALF, HEIGHT), (HALF, HEIGHT), (HALF, 0), (-HALF, 0))]
        near = [camera(x, y, -9) for x, y in ((-HALF, HEIGHT), (HALF, HEIGHT), (HALF, 0), (-HALF, 0))]
        frame.fill(path.rounded(0, 0, w, h, 0), "#A7ABA8")
        frame.fill(path.polygon(near[0], near[1], corners[1], corners[0]), self.ceiling)
        frame.fill(path.polygon(near[3], near[2], corners[2], corners[3]), self.floor)
        for side, a, b in ((-1, 0, 3), (1, 1, 2)):
            frame.fill(path.polygon(near[a], corners[a], corners[b], near[b]), self.wall)
            self._wall(frame, camera, side, -9, END, 0.86, 1.0, self.rail)
            self._wall(frame, camera, side, -9, END, 0.0, 0.09, "#6A7376", 0.7)
            self._floor(frame, camera, side * 1.5, side * 1.62, -9, END, "#D8B43C")
        for z in (1.2, 4.0, 6.8, 9.6, 12.4):
            self._flat(frame, camera, -0.5, 0.5, z, z + 1.3, HEIGHT - 0.005, "#F7F5E6")
            self._floor(frame, camera, -0.45, 0.45, z, z + 1.3, "#FFFFFF", 0.08)

    def _wall(self, frame, camera, side, z0, z1, y0, y1, paint, opacity=1.0):
        x = side * HALF
        frame.fill(path.polygon(camera(x, y1, z0), camera(x, y1, z1), camera(x, y0, z1), camera(x, y0, z0)),
                   paint, opacity)

    def _flat(self, frame, camera, x0, x1, z0, z1, y, paint, opacity=1.0):
        if z1 - camera.z > _NEAR:
            frame.fill(path.polygon(camera(x0, y, z0), camera(x1, y, z0), camera(x1, y, z1), camera(x0, y, z1)),
                       paint, opacity)

    def _floor(self, frame, camera, x0, x1, z0, z1, paint, opacity=1.0):
        self._flat(frame, camera, x0, x1, z0, z1, 0, paint, opacity)

    def _end(self, frame, camera, number):
        def face(x0, x1, y0, y1, paint, opacity=1.0):
            (left, top), (right, bottom) = camera(x0, y1, END), camera(x1, y0, END)
            frame.fill(path.rounded(left, top, right - left, bottom - top, 0), paint, opacity)

        face(-HALF, HALF, 0, HEIGHT, "#B7B9B3")
        face(-1.15, 1.15, 0, 2.2, "#3D525C")
        for side in (-1, 1):
            left, right = (-1.06, -0.02) if side < 0 else (0.02, 1.06)
            face(left, right, 0.02, 2.12, "#4F6975")
            face(left + 0.22, right - 0.22, 1.1, 1.9, "#ABC9D2")
            face(side * 0.14 - 0.03, side * 0.14 + 0.03, 0.85, 1.2, "#DDE2E2")
        left, top = camera(-0.55, 2.62, END)
        right, bottom = camera(0.55, 2.3, END)
        figures.exit_sign(frame, left, top, right - left, bottom - top)
        bright = 0.5 + 0.5 * math.cos(number * 2 * math.pi / 20)
        x, y = camera(1.55, 2.35, END)
        size = camera.focus / camera.depth(END)
        figures.soft(frame, x, y, (0.35 + 0.45 * bright) * size, "#FF4A30", 0.2 + 0.5 * bright, 14)
        frame.fill(path.circle(x, y, 0.12 * size), "#FFB9A6" if bright > 0.5 else "#C43A28")

    def _door(self, frame, camera, side, z0, z1, colours):
        edge, leaf, glass = colours
        self._wall(frame, camera, side, z0, z1, 0, 2.2, edge)
        self._wall(frame, camera, side, z0 + 0.08, z1 - 0.08, 0, 2.12, leaf)
        self._wall(frame, camera, side, z0 + 0.3, z1 - 0.3, 1.15, 1.9, glass)
        self._wall(frame, camera, side, z0 + 0.14, z0 + 0.2, 0.95, 1.15, "#E3E6E6")

    def _doors(self, frame, camera):
        for z in (11.2, 7.0):
            self._door(frame, camera, -1, z, z + 1.3, ("#56666C", "#6C7F86", "#9ABAC3"))
        for z in (10.4, 6.2):
            self._door(frame, camera, 1, z, z + 1.3, ("#656A66", "#80867F", "#A9C3CA"))
        self._wall(frame, camera, 1, 4.2, 5.1, 1.3, 1.95, "#F2EFE3")
        for y, end in ((1.82, 4.95), (1.68, 4.95), (1.54, 4.7)):
            self._wall(frame, camera, 1, 4.32, end, y - 0.02, y + 0.02, "#8E928F")

    def _things(self, frame, camera, number):
        time = number / 25
        figures.smoke(frame, *camera(1.5, 0.2, 12.2), time + 3, camera.focus / camera.depth(12.2), 12, "#51565B", 1.0, -0.3)
        visitor = 7.2 + time * 1.15
        shadow = camera.ground(-0.35, visitor)
        frame.fill(path.ellipse(shadow.x, shadow.y, 0.3 * shadow.scale, 0.06 * shadow.scale), "#30373A", 0.3)
        figures.away(frame, shadow, figures.VISITOR, time * 5.6)
        self._box(frame, camera)
        self._wall(frame, camera, -1, *PANEL_Z, *PANEL_Y, "#F0EFE8")
        self._wall(frame, camera, -1, *PANEL_Z, PANEL_Y[1] - 0.12, PANEL_Y[1], "#B9251E")
        figures.extinguisher(frame, camera.ground(*BOTTLE))

    def _box(self, frame, camera):
        x0, x1, z0, z1, top = 1.25, 1.95, 5.6, 6.3, 0.55
        p = camera
        frame.fill(path.polygon(p(x0, top, z0), p(x1, top, z0), p(x1, top, z1), p(x0, top, z1)), "#C99D60")
        frame.fill(path.polygon(p(x0, top, z0), p(x0, top, z1), p(x0, 0, z1), p(x0, 0, z0)), "#86612F")
        frame.fill(path.polygon(p(x0, top, z0), p(x1, top, z0), p(x1, 0, z0), p(x0, 0, z0)), "#A87E47")
        middle = (x0 + x1) / 2
        frame.fill(path.polygon(p(middle - 0.07, top, z0), p(middle + 0.07, top, z0), p(middle + 0.07, 0.32, z0),
                                p(middle - 0.07, 0.32, z0)), "#E3D5B6")


PANEL_Z, PANEL_Y = (5.1, 6.25), (0.72, 1.9)
BOTTLE = (-HALF + 0.15, 5.55, 0.94)


def extinguisher_zone(number, width, height):
    """Five corners around the panel with the bottle."""
    camera = camera_at(number, width, height)
    near, far = PANEL_Z[0] - 0.02, PANEL_Z[1] + 0.03
    bottom = (camera(-HALF, PANEL_Y[0] - 0.03, near), camera(-HALF, PANEL_Y[0] - 0.03, far))
    middle = tuple((a + b) / 2 for a, b in zip(*bottom))
    return [camera(-HALF, PANEL_Y[1] + 0.03, near), camera(-HALF, PANEL_Y[1] + 0.03, far), bottom[1],
            (middle[0], middle[1] + 4), bottom[0]]


def exit_zone(number, width, height):
    camera = camera_at(number, width, height)
    return [camera(x, y, END) for x, y in ((-1.25, 2.66), (1.25, 2.66), (1.25, 0.0), (-1.25, 0.0))]
