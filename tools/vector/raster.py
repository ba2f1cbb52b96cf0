"""Coverage of polygons: exact along a row, sampled at `samples` lines within each pixel row."""

import math


def _edges(path):
    for points, _ in path:
        for i in range(len(points)):
            x0, y0 = points[i - 1]
            x1, y1 = points[i]
            if y0 == y1:
                continue
            turn = 1
            if y0 > y1:
                x0, y0, x1, y1, turn = x1, y1, x0, y0, -1
            yield y0, y1, x0, (x1 - x0) / (y1 - y0), turn


def _spans(crossings, even_odd):
    crossings.sort()
    winding = 0
    start = 0.0
    for x, turn in crossings:
        was_inside = winding & 1 if even_odd else winding
        winding += turn
        inside = winding & 1 if even_odd else winding
        if not was_inside and inside:
            start = x
        elif was_inside and not inside and x > start:
            yield start, x


def coverage(path, width, height, samples=16, even_odd=False):
    """Yields (y, runs) for each touched row; a run is (x0, x1, share) with 0 < share <= 1.

    Runs of a row are in order and do not overlap; the path is clipped to width x height.
    """
    edges = sorted(_edges(path))
    if not edges:
        return
    first = max(0, math.floor(edges[0][0]))
    last = min(height, math.ceil(max(edge[1] for edge in edges)))
    step = 1 / samples
    following = 0
    active = []
    for y in range(first, last):
        while following < len(edges) and edges[following][0] < y + 1:
            active.append(edges[following])
            following += 1
        active = [edge for edge in active if edge[1] > y]
        part = {}
        change = {}
        for sample in range(samples):
            line = y + (sample + 0.5) * step
            crossings = [(x + (line - top) * slope, turn)
                         for top, bottom, x, slope, turn in active if top <= line < bottom]
            for left, right in _spans(crossings, even_odd):
                left, right = max(0.0, left), min(float(width), right)
                if left >= right:
                    continue
                a, b = int(left), int(right)
                if a == b:
                    part[a] = part.get(a, 0.0) + (right - left) * step
                    continue
                part[a] = part.get(a, 0.0) + (a + 1 - left) * step
                if b < width:
                    part[b] = part.get(b, 0.0) + (right - b) * step
                change[a + 1] = change.get(a + 1, 0.0) + step
                change[b] = change.get(b, 0.0) - step
        if part or change:
            yield y, _runs(part, change, width)


def _runs(part, change, width):
    stops = sorted(set(part) | {x + 1 for x in part} | set(change) | {width})
    runs = []
    level = 0.0
    for x, end in zip(stops, stops[1:]):
        level += change.get(x, 0.0)
        share = level + part.get(x, 0.0)
        if share > 0.002:
            runs.append((x, end, 1.0 if share > 0.998 else share))
    return runs
