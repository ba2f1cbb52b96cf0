// The outline of a zone on one frame: a closed polygon, an active flag and a centre handle. A Zone
// keeps its shapes in a compact store and hands them out as objects of this type. Main thread only.
//
// All coordinates are display pixels with (0, 0) at the picture area's top left. An invalid point
// index logs "..\ZoneShape.cpp:368 Invalid point index" and changes nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "core/File.h"
#include "platform/Canvas.h"
#include "platform/Geometry.h"

namespace zone {

class ZoneShape {
public:
    /// No points, active, recordSize 0.
    [[nodiscard]] static std::shared_ptr<ZoneShape> createEmpty();
    /// The flag and the points of `source`; its centre is not copied.
    [[nodiscard]] static std::shared_ptr<ZoneShape> copyFrom(const ZoneShape& source);

    [[nodiscard]] int pointCount() const { return static_cast<int>(points.size()); }
    /// Clamps to the current zone manager's area.
    void setPoint(int index, int x, int y);
    /// Index pointCount(): shifts the whole shape so that the centre of the last draw would come to
    /// (x, y), unclamped, stores the shift in `delta` and returns true. Else setPoint and false.
    bool movePoint(int index, int x, int y, platform::Point& delta);
    /// Puts a point behind `afterIndex`, or at the end when that is -1 or there is none. The new
    /// index, or -1 when `afterIndex` is no point. Unclamped.
    int insertPoint(int afterIndex, int x, int y);
    /// Removes one point; an index out of range is passed over.
    void removePoint(int index);
    /// The handle at (x, y): the lowest point index, else pointCount() for the centre of a shape
    /// with at least 3 points, else -1.
    [[nodiscard]] int hitTest(int x, int y) const;
    /// Paints at `origin` in the canvas's pixels and sets the centre.
    void draw(platform::Canvas& canvas, int originX, int originY, int selectedIndex);

    /// Appends one record, in video pixels. False when there is no scale or a write fails.
    [[nodiscard]] bool write(core::File& file) const;
    /// Reads the record at the start of `bytes`. `consumed` becomes its size, at least 8. False
    /// when it does not fit (nothing changes, `consumed` 0) or there is no scale (the points stay
    /// at (0, 0)).
    [[nodiscard]] bool read(std::span<const std::uint8_t> bytes, std::size_t& consumed);

    std::int32_t centerX = 0; ///< as the last draw left it
    std::int32_t centerY = 0;
    /// Bytes of this shape's record; 0 until the first insert, delete, copy or read.
    std::uint32_t recordSize = 0;
    std::vector<platform::Point> points;
    bool active = true;

private:
    void updateRecordSize();
};

} // namespace zone
