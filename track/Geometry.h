// Points, polygons and warps of the tracker, in picture pixels: the centre of the upper left pixel
// is (0, 0), y grows downwards.
#pragma once

#include <array>
#include <vector>

namespace track {

struct Point {
    double x = 0;
    double y = 0;

    bool operator==(const Point&) const = default;
};

using Polygon = std::vector<Point>;

struct Box {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;

    [[nodiscard]] double width() const { return right - left; }
    [[nodiscard]] double height() const { return bottom - top; }
};

[[nodiscard]] Box boundsOf(const Polygon& polygon);
/// By the even-odd rule.
[[nodiscard]] bool contains(const Polygon& polygon, Point point);
/// 0 inside the polygon, else the distance to its outline.
[[nodiscard]] double distanceTo(const Polygon& polygon, Point point);
[[nodiscard]] double distanceToOutline(const Polygon& polygon, Point point);
/// Positive when the corners go clockwise on the screen.
[[nodiscard]] double signedArea(const Polygon& polygon);

/// A projective map of the plane, by rows; translations, similarities and affine maps are kinds of
/// it. Hartley and Zisserman, "Multiple View Geometry in Computer Vision", 2nd edition, chapter 2.
struct Warp {
    std::array<double, 9> m{1, 0, 0, 0, 1, 0, 0, 0, 1};

    [[nodiscard]] static Warp translation(double x, double y) {
        return {{1, 0, x, 0, 1, y, 0, 0, 1}};
    }
    /// Not a number where the point would lie on the horizon.
    [[nodiscard]] Point operator()(Point p) const {
        const double w = m[6] * p.x + m[7] * p.y + m[8];
        return {(m[0] * p.x + m[1] * p.y + m[2]) / w, (m[3] * p.x + m[4] * p.y + m[5]) / w};
    }
    /// First `inner`, then this one.
    [[nodiscard]] Warp operator*(const Warp& inner) const;
    /// The identity when there is none.
    [[nodiscard]] Warp inverse() const;
};

[[nodiscard]] Polygon warped(const Warp& warp, const Polygon& polygon);

/// Whether `warp` keeps the polygon a likely view of the same thing: nothing at or behind the
/// horizon, no mirror image, and an area that differs by less than the factor `growth`.
[[nodiscard]] bool isPlausible(const Warp& warp, const Polygon& polygon, double growth);

} // namespace track
