#include "track/Geometry.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace track {
namespace {

double distanceToSegment(Point p, Point a, Point b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double squared = dx * dx + dy * dy;
    const double along =
        squared > 0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / squared, 0.0, 1.0) : 0;
    return std::hypot(p.x - a.x - along * dx, p.y - a.y - along * dy);
}

} // namespace

Box boundsOf(const Polygon& polygon) {
    if (polygon.empty()) {
        return {};
    }
    Box box{polygon[0].x, polygon[0].y, polygon[0].x, polygon[0].y};
    for (const Point& p : polygon) {
        box = {std::min(box.left, p.x), std::min(box.top, p.y), std::max(box.right, p.x),
               std::max(box.bottom, p.y)};
    }
    return box;
}

bool contains(const Polygon& polygon, Point point) {
    bool inside = false;
    for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
        const Point& a = polygon[i];
        const Point& b = polygon[j];
        if ((a.y > point.y) != (b.y > point.y) &&
            point.x < (b.x - a.x) * (point.y - a.y) / (b.y - a.y) + a.x) {
            inside = !inside;
        }
    }
    return inside;
}

double distanceTo(const Polygon& polygon, Point point) {
    return contains(polygon, point) ? 0 : distanceToOutline(polygon, point);
}

double distanceToOutline(const Polygon& polygon, Point point) {
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
        least = std::min(least, distanceToSegment(point, polygon[j], polygon[i]));
    }
    return least;
}

double signedArea(const Polygon& polygon) {
    double twice = 0;
    for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
        twice += polygon[j].x * polygon[i].y - polygon[i].x * polygon[j].y;
    }
    return twice / 2;
}

Warp Warp::operator*(const Warp& inner) const {
    Warp product;
    for (std::size_t row = 0; row < 9; row += 3) {
        for (std::size_t column = 0; column < 3; ++column) {
            product.m[row + column] = m[row] * inner.m[column] + m[row + 1] * inner.m[3 + column] +
                                      m[row + 2] * inner.m[6 + column];
        }
    }
    return product;
}

Warp Warp::inverse() const {
    const double c0 = m[4] * m[8] - m[5] * m[7];
    const double c1 = m[5] * m[6] - m[3] * m[8];
    const double c2 = m[3] * m[7] - m[4] * m[6];
    const double determinant = m[0] * c0 + m[1] * c1 + m[2] * c2;
    if (!(std::abs(determinant) > 1e-12)) {
        return {};
    }
    const double k = 1 / determinant;
    return {{c0 * k, (m[2] * m[7] - m[1] * m[8]) * k, (m[1] * m[5] - m[2] * m[4]) * k, c1 * k,
             (m[0] * m[8] - m[2] * m[6]) * k, (m[2] * m[3] - m[0] * m[5]) * k, c2 * k,
             (m[1] * m[6] - m[0] * m[7]) * k, (m[0] * m[4] - m[1] * m[3]) * k}};
}

Polygon warped(const Warp& warp, const Polygon& polygon) {
    Polygon result;
    result.reserve(polygon.size());
    for (const Point& p : polygon) {
        result.push_back(warp(p));
    }
    return result;
}

bool isPlausible(const Warp& warp, const Polygon& polygon, double growth) {
    for (const Point& p : polygon) {
        const double w = warp.m[6] * p.x + warp.m[7] * p.y + warp.m[8];
        if (!(w > 0.2 * std::abs(warp.m[8]))) {
            return false;
        }
    }
    const double before = signedArea(polygon);
    const double ratio = signedArea(warped(warp, polygon)) / before;
    return ratio < growth && ratio * growth > 1; // false for what is not a number, too
}

} // namespace track
