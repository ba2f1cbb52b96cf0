"""What the rasteriser is asked for beyond the skin, whose images are compared byte for byte."""

import os
import sys
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.insert(0, os.path.join(ROOT, "tools"))
from vector import path, png  # noqa: E402
from vector.canvas import Columns, Frame, Rows, gradient  # noqa: E402
from vector.raster import coverage  # noqa: E402


class VectorTest(unittest.TestCase):
    def test_the_coverage_of_a_shape_adds_up_to_its_area(self):
        for name, shape, wanted in [
                ("half pixels", path.rounded(10.5, 10.25, 20, 5, 0), 100),
                ("round corners", path.rounded(10, 10, 20, 20, 5), 400 - 25 * (4 - 3.14159)),
                ("overlapping pieces count once", path.rounded(0, 0, 10, 10, 0) + path.rounded(5, 0, 10, 10, 0), 150),
                ("beyond every edge", path.rounded(-50, -50, 300, 300, 0), 10000)]:
            with self.subTest(name):
                runs = coverage(shape, 100, 100)
                area = sum((x1 - x0) * share for _, row in runs for x0, x1, share in row)
                self.assertAlmostEqual(area, wanted, delta=max(0.5, wanted * 0.01))

    def test_frames_take_plain_and_running_colours(self):
        frame = Frame(4, 2)
        frame.fill(path.rounded(0, 0, 4, 1, 0), Columns(4, gradient((0, "#000000"), (4, "#400000"))))
        frame.fill(path.rounded(0, 1, 4, 1, 0), Rows(2, gradient((0, "#000000"), (2, "#004000"))))
        frame.fill(path.rounded(3, 1, 1, 1, 0), "#FFFFFF", 0.5)
        self.assertEqual(bytes(frame.planes[0]), bytes((8, 24, 40, 56, 0, 0, 0, 128)))
        self.assertEqual(bytes(frame.planes[1]), bytes((0, 0, 0, 0, 48, 48, 48, 152)))
        self.assertEqual(frame.gbr()[:8], bytes(frame.planes[1]))

    def test_pictures_that_are_no_png_of_ours_are_refused(self):
        good = png.encode(2, 2, bytes(16))
        for data in (b"", b"GIF89a", good[:8], good[:24] + b"\x10" + good[25:]):
            with self.assertRaises(ValueError):
                png.decode(data)


if __name__ == "__main__":
    unittest.main()
