// Which part of each pixel a path covers, exactly to a 256th of a pixel in either direction, and in
// whole numbers, so that every system gets the same pixels.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/Color.h"
#include "platform/Geometry.h"
#include "platform/Path.h"
#include "platform/raster/PixelView.h"

namespace platform::raster {

/// Keeps its memory for the next path.
class PathFiller {
public:
    /// Lays `color` on the inside of all parts, by what it covers of each pixel. `clip` lies inside
    /// the target, and a pixel does not depend on it. Where parts overlap that run round in
    /// opposite ways they cancel out, so that a ring is two of them. Coordinates beyond two million
    /// count as that.
    void fill(PixelView target, const Rect& clip, const Path& path, Color color);

private:
    struct FixedPoint;

    void begin(const Rect& area);
    void addEdge(FixedPoint from, FixedPoint to);
    void addInRow(int row, std::int64_t from, std::int64_t to, int height);
    void addCell(int row, std::int64_t column, int height, int doubleArea);
    void change(int row, int column, int by);
    void sweepRow(std::uint32_t* pixels, int row, std::uint32_t pixel);

    Rect m_area; ///< that the path touches, inside the clip
    int m_marksPerRow = 0;
    /// By how much the cover differs from the pixel on the left, in 512ths of a 256th; a row has
    /// one more than the area. All zero between fills.
    std::vector<std::uint32_t> m_changes;
    std::vector<std::uint64_t> m_marks; ///< one bit for each change, so that a sweep can jump
};

} // namespace platform::raster
