// Shapes that are drawn with smooth edges: polygons, curves, boxes with round corners, strokes and
// arrow heads. Made with basic arithmetic and square roots alone, so that every system gets the
// same points.
#pragma once

#include <span>
#include <vector>

namespace platform {

/// A place between pixels: a pixel's own point (x, y) is its top left corner, its middle lies half
/// a pixel further.
struct PointF {
    double x = 0;
    double y = 0;
};

/// Lines and polygons, in window pixels. Curves become lines at once, less than a tenth of a pixel
/// from the true curve as long as that takes no more than 256 of them.
class Path {
public:
    struct Part {
        std::vector<PointF> points;
        bool isClosed = false; ///< for a stroke; a fill closes every part
    };

    [[nodiscard]] const std::vector<Part>& parts() const { return m_parts; }

    /// Begins a part.
    void moveTo(PointF point);
    /// Goes on from the last point; without one, begins a part.
    void lineTo(PointF point);
    void curveTo(PointF firstControl, PointF secondControl, PointF end);
    /// Ends the part where it began.
    void close();

    void addPolygon(std::span<const PointF> corners);
    /// The radius is cut down to half the shorter side. Without an area there is no box.
    void addRoundBox(PointF topLeft, double width, double height, double radius);
    /// A triangle that points from `from` to `tip`, where it ends.
    void addArrowHead(PointF from, PointF tip, double length, double width);

    /// What a pen of this width covers on the way along all parts: open ones end square at their
    /// last point; corners are pointed up to a turn of about 105 degrees and cut off beyond that.
    [[nodiscard]] Path stroked(double width) const;
    [[nodiscard]] Path scaled(double factor) const;

private:
    std::vector<Part> m_parts;
};

} // namespace platform
