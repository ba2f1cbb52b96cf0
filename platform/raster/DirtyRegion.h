// What a window still has to paint. Rectangles that touch the same pixels are joined; those that do
// not stay apart, so that a change in one corner never repaints the picture between two corners.
#pragma once

#include <vector>

#include "platform/Geometry.h"

namespace platform::raster {

class DirtyRegion {
public:
    /// Adds `rect`; an empty one adds nothing.
    void add(const Rect& rect);
    [[nodiscard]] bool isEmpty() const { return m_rects.empty(); }
    /// Hands out the rectangles, none of which overlaps another, and forgets them.
    [[nodiscard]] std::vector<Rect> take();
    void clear() { m_rects.clear(); }

private:
    std::vector<Rect> m_rects;
};

} // namespace platform::raster
