"""The rasteriser that draws skin and demo clips: areas, overlaps, path data and PNG files."""

import os
import sys
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.insert(0, os.path.join(ROOT, "tools"))
from vector import path, png  # noqa: E402
from vector.canvas import Columns, Frame, Image, Rows, gradient  # noqa: E402
from vector.raster import coverage  # noqa: E402


def area(shape, **more):
    return sum((x1 - x0) * share for _, runs in coverage(shape, 100, 100, **more) for x0, x1, share in runs)


class RasterTest(unittest.TestCase):
    def test_the_coverage_of_a_shape_adds_up_to_its_area(self):
        cases = [
            ("whole pixels", path.rounded(10, 10, 20, 5, 0), 100),
            ("half pixels", path.rounded(10.5, 10.25, 20, 5, 0), 100),
            ("round corners", path.rounded(10, 10, 20, 20, 5), 400 - 25 * (4 - 3.14159)),
            ("circle", path.circle(50, 50, 20), 3.14159 * 400),
            ("overlapping pieces count once", path.rounded(0, 0, 10, 10, 0) + path.rounded(5, 0, 10, 10, 0), 150),
            ("a stroke with square ends", path.stroke(path.line((10, 10), (30, 10)), 4, "butt"), 80),
            ("a stroke with round ends", path.stroke(path.line((10, 10), (30, 10)), 4), 80 + 3.14159 * 4),
            ("partly outside", path.rounded(-5, -5, 10, 10, 0), 25),
            ("beyond every edge", path.rounded(-50, -50, 300, 300, 0), 10000),
        ]
        for name, shape, wanted in cases:
            with self.subTest(name):
                self.assertAlmostEqual(area(shape), wanted, delta=max(0.5, wanted * 0.01))

    def test_even_odd_leaves_the_inner_shape_free(self):
        frame = path.rounded(0, 0, 20, 20, 0) + path.rounded(2, 2, 16, 16, 0)
        self.assertAlmostEqual(area(frame, even_odd=True), 400 - 256, delta=0.1)

    def test_path_data_keeps_to_its_commands(self):
        cases = [
            ("M1 2L4 6", [([(1, 2), (4, 6)], False)]),
            ("m1 2l3 4h-2v1z", [([(1, 2), (4, 6), (2, 6), (2, 7)], True)]),
            ("M0 0L1 0M5 5L6 5", [([(0, 0), (1, 0)], False), ([(5, 5), (6, 5)], False)]),
            ("M0 0 1 0 1 1", [([(0, 0), (1, 0), (1, 1)], False)]),
            ("M.5-.5L1.5.5", [([(0.5, -0.5), (1.5, 0.5)], False)]),
        ]
        for text, wanted in cases:
            with self.subTest(text):
                self.assertEqual(path.parse(text), wanted)
        half = path.parse("M2 5a3 3 0 01 6 0")[0][0]
        self.assertAlmostEqual(min(y for _, y in half), 2, places=3)
        self.assertEqual(tuple(round(value, 6) for value in half[-1]), (8, 5))


class CanvasTest(unittest.TestCase):
    def test_an_edge_pixel_keeps_its_colour_and_takes_part_of_the_opacity(self):
        image = Image(4, 1)
        image.fill(path.rounded(0.5, 0, 2, 1, 0), "#204060")
        self.assertEqual(image.rgba(), bytes((32, 64, 96, 128, 32, 64, 96, 255, 32, 64, 96, 128, 0, 0, 0, 0)))

    def test_frames_take_plain_and_running_colours(self):
        frame = Frame(4, 2)
        frame.fill(path.rounded(0, 0, 4, 1, 0), Columns(4, gradient((0, "#000000"), (4, "#400000"))))
        frame.fill(path.rounded(0, 1, 4, 1, 0), Rows(2, gradient((0, "#000000"), (2, "#004000"))))
        frame.fill(path.rounded(3, 1, 1, 1, 0), "#FFFFFF", 0.5)
        self.assertEqual(bytes(frame.planes[0]), bytes((8, 24, 40, 56, 0, 0, 0, 128)))
        self.assertEqual(bytes(frame.planes[1]), bytes((0, 0, 0, 0, 48, 48, 48, 152)))
        self.assertEqual(frame.gbr()[:8], bytes(frame.planes[1]))


class PngTest(unittest.TestCase):
    def test_what_is_written_reads_back(self):
        pixels = bytes((x * 7 + y * 13) % 256 for y in range(9) for x in range(5 * 4))
        self.assertEqual(png.decode(png.encode(5, 9, pixels)), (5, 9, pixels))

    def test_other_files_are_refused(self):
        good = png.encode(2, 2, bytes(16))
        for data in (b"", b"GIF89a", good[:8], good[:24] + b"\x10" + good[25:]):
            with self.assertRaises(ValueError):
                png.decode(data)


if __name__ == "__main__":
    unittest.main()
