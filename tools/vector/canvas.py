"""Canvases: Image keeps transparency (skin images), Frame is an opaque picture (video)."""

from vector.raster import coverage


def rgb(colour):
    """"#RRGGBB" as three numbers."""
    return tuple(int(colour[i:i + 2], 16) for i in (1, 3, 5))


def mix(a, b, share):
    """Colour between a (share 0) and b (share 1), all of them (r, g, b)."""
    return tuple(x + (y - x) * share for x, y in zip(a, b))


class Image:
    """A small picture: premultiplied floats inside, straight 8-bit alpha as output."""

    def __init__(self, width, height):
        self.width = width
        self.height = height
        self._pixels = [[0.0, 0.0, 0.0, 0.0] for _ in range(width * height)]

    def fill(self, path, colour, opacity=1.0, even_odd=False):
        red, green, blue = rgb(colour)
        for y, runs in coverage(path, self.width, self.height, 16, even_odd):
            for x0, x1, share in runs:
                alpha = share * opacity
                for x in range(x0, x1):
                    pixel = self._pixels[y * self.width + x]
                    rest = 1 - alpha
                    pixel[0] = red * alpha + pixel[0] * rest
                    pixel[1] = green * alpha + pixel[1] * rest
                    pixel[2] = blue * alpha + pixel[2] * rest
                    pixel[3] = alpha + pixel[3] * rest

    def clear(self, x, y, width, height):
        """Makes a rectangle of whole pixels transparent again."""
        for row in range(y, y + height):
            for column in range(x, x + width):
                self._pixels[row * self.width + column] = [0.0, 0.0, 0.0, 0.0]

    def rgba(self):
        """Rows from the top, four bytes a pixel: R, G, B, A."""
        out = bytearray()
        for red, green, blue, alpha in self._pixels:
            if alpha < 0.001:
                out += b"\0\0\0\0"
            else:
                out += bytes(min(255, int(value + 0.5)) for value in
                             (red / alpha, green / alpha, blue / alpha, alpha * 255))
        return bytes(out)


class Solid:
    """One colour over the whole frame."""

    def __init__(self, colour):
        self.colour = rgb(colour) if isinstance(colour, str) else colour

    def row(self, y):
        return self.colour


class Rows:
    """A colour for each row: function(y) gives (r, g, b)."""

    def __init__(self, height, function):
        self._rows = [function(y + 0.5) for y in range(height)]

    def row(self, y):
        return self._rows[y]


class Columns:
    """A colour for each column, the same in every row: function(x) gives (r, g, b)."""

    def __init__(self, width, function):
        columns = [function(x + 0.5) for x in range(width)]
        self.planes = [bytes(min(255, int(column[i] + 0.5)) for column in columns) for i in range(3)]

    def row(self, y):
        return None


def gradient(*stops):
    """A function from a place to (r, g, b); stops are (place, "#RRGGBB") in order."""
    places = [(place, rgb(colour)) for place, colour in stops]

    def colour_at(place):
        if place <= places[0][0]:
            return places[0][1]
        for (a, first), (b, second) in zip(places, places[1:]):
            if place <= b:
                return mix(first, second, (place - a) / (b - a))
        return places[-1][1]

    return colour_at


class Frame:
    """An opaque RGB picture in three planes. Runs are filled and blended by whole slices, so that
    plain Python draws a 1280x720 picture in well under a second."""

    _tables = {}

    def __init__(self, width, height, source=None):
        self.width = width
        self.height = height
        self.planes = [bytearray(plane) for plane in source.planes] if source else \
            [bytearray(width * height) for _ in range(3)]

    def fill(self, path, paint, opacity=1.0, even_odd=False, samples=4):
        if isinstance(paint, str):
            paint = Solid(paint)
        for y, runs in coverage(path, self.width, self.height, samples, even_odd):
            colour = paint.row(y)
            base = y * self.width
            for x0, x1, share in runs:
                alpha = share * opacity
                if colour is None:
                    self._blend_planes(base, x0, x1, paint.planes, alpha)
                else:
                    self._blend(base + x0, base + x1, colour, alpha)

    def _blend(self, start, end, colour, alpha):
        for plane, value in zip(self.planes, colour):
            value = int(value + 0.5)
            if alpha > 0.998:
                plane[start:end] = bytes((value,)) * (end - start)
            else:
                plane[start:end] = plane[start:end].translate(self._table(value, alpha))

    def _blend_planes(self, base, x0, x1, sources, alpha):
        for plane, source in zip(self.planes, sources):
            if alpha > 0.998:
                plane[base + x0:base + x1] = source[x0:x1]
            else:
                for x in range(x0, x1):
                    old = plane[base + x]
                    plane[base + x] = int(old + (source[x] - old) * alpha + 0.5)

    @classmethod
    def _table(cls, value, alpha):
        """256 blended values; alpha in 64ths keeps the cache small and no step visible."""
        steps = max(1, int(alpha * 64 + 0.5))
        key = (value, steps)
        table = cls._tables.get(key)
        if table is None:
            table = bytes(int(old + (value - old) * steps / 64 + 0.5) for old in range(256))
            cls._tables[key] = table
        return table

    def gbr(self):
        """The planes in the order of the planar "gbrp" layout: green, blue, red."""
        return bytes(self.planes[1]) + bytes(self.planes[2]) + bytes(self.planes[0])
