#include "platform/Path.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace platform {

namespace {

constexpr double kMostSteps = 256;
/// Error of a curve's lines at one step is 3/4 of its second difference; this gives 0.1 pixel.
constexpr double kStepsOfBend = 7.5;
/// How far the controls of a quarter circle lie from its ends, in radii.
constexpr double kCircle = 0.5523;
/// Points nearer than this are one: they give no direction.
constexpr double kSamePoint = 1e-3;
/// Cosine of the turn up to which the corners of a stroke are pointed.
constexpr double kPointed = -0.25;

PointF operator+(PointF a, PointF b) {
    return {a.x + b.x, a.y + b.y};
}
PointF operator-(PointF a, PointF b) {
    return {a.x - b.x, a.y - b.y};
}
PointF operator*(PointF a, double factor) {
    return {a.x * factor, a.y * factor};
}
double dot(PointF a, PointF b) {
    return a.x * b.x + a.y * b.y;
}
double lengthOf(PointF a) {
    return std::sqrt(dot(a, a)); // std::hypot differs from one system to the next
}
PointF turned(PointF a) {
    return {-a.y, a.x};
}
PointF direction(PointF from, PointF to) {
    const PointF way = to - from;
    return way * (1 / lengthOf(way));
}

/// The points that differ; of a closed part the first is not repeated at the end.
std::vector<PointF> distinctPoints(const Path::Part& part) {
    std::vector<PointF> points;
    for (const PointF& point : part.points) {
        if (points.empty() || lengthOf(point - points.back()) > kSamePoint) {
            points.push_back(point);
        }
    }
    while (part.isClosed && points.size() > 1 &&
           lengthOf(points.front() - points.back()) <= kSamePoint) {
        points.pop_back();
    }
    return points;
}

/// Both edges of a stroke as it follows its line. All that it adds runs round the same way, so that
/// where pieces overlap they do not cancel out.
class Pen {
public:
    Pen(Path& target, double width) : m_target(target), m_half(width / 2) {}

    /// A butt end of a line in this direction.
    void end(PointF at, PointF along) { widen(at, turned(along) * m_half); }

    /// A corner, pointed.
    void corner(PointF at, PointF in, PointF out) {
        widen(at, turned(in + out) * (m_half / (1 + dot(in, out))));
    }

    /// A corner that is cut off: two ends, and a wedge between them.
    void cutCorner(PointF at, PointF in, PointF out) {
        end(at, in);
        finish();
        wedge(at, in, out);
        end(at, out);
    }

    void wedge(PointF at, PointF in, PointF out) {
        const bool left = dot(turned(in), out) < 0;
        const PointF first = at + turned(in) * (left ? m_half : -m_half);
        const PointF second = at + turned(out) * (left ? m_half : -m_half);
        m_target.addPolygon(std::vector<PointF>{at, left ? first : second, left ? second : first});
    }

    /// The line ends here.
    void finish() {
        m_left.insert(m_left.end(), m_right.rbegin(), m_right.rend());
        m_target.addPolygon(m_left);
        m_left.clear();
        m_right.clear();
    }

    /// The line goes round: one edge inside the other.
    void finishRing() {
        m_target.addPolygon(m_left);
        std::reverse(m_right.begin(), m_right.end());
        m_target.addPolygon(m_right);
    }

private:
    void widen(PointF at, PointF across) {
        m_left.push_back(at + across);
        m_right.push_back(at - across);
    }

    Path& m_target;
    double m_half;
    std::vector<PointF> m_left;
    std::vector<PointF> m_right;
};

bool isPointed(PointF in, PointF out) {
    return dot(in, out) > kPointed;
}

void strokeOpen(const std::vector<PointF>& points, Pen& pen) {
    PointF in = direction(points[0], points[1]);
    pen.end(points[0], in);
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        const PointF out = direction(points[i], points[i + 1]);
        if (isPointed(in, out)) {
            pen.corner(points[i], in, out);
        } else {
            pen.cutCorner(points[i], in, out);
        }
        in = out;
    }
    pen.end(points.back(), in);
    pen.finish();
}

/// Begins and ends at a corner that is cut off; without one it is a ring.
void strokeClosed(std::vector<PointF> points, Pen& pen) {
    const std::size_t count = points.size();
    const auto into = [&](std::size_t i) {
        return direction(points[(i + count - 1) % count], points[i % count]);
    };
    for (std::size_t i = 0; i < count; ++i) {
        const PointF in = into(i);
        const PointF out = into(i + 1);
        if (!isPointed(in, out)) {
            pen.wedge(points[i], in, out);
            std::rotate(points.begin(), points.begin() + static_cast<std::ptrdiff_t>(i),
                        points.end());
            points.push_back(points.front());
            strokeOpen(points, pen);
            return;
        }
    }
    for (std::size_t i = 0; i < count; ++i) {
        pen.corner(points[i], into(i), into(i + 1));
    }
    pen.finishRing();
}

} // namespace

void Path::moveTo(PointF point) {
    m_parts.push_back({{point}, false});
}

void Path::lineTo(PointF point) {
    if (m_parts.empty()) {
        moveTo(point);
    } else {
        m_parts.back().points.push_back(point);
    }
}

void Path::curveTo(PointF firstControl, PointF secondControl, PointF end) {
    const PointF start = m_parts.empty() ? firstControl : m_parts.back().points.back();
    const double bend = std::max(lengthOf(start - firstControl * 2 + secondControl),
                                 lengthOf(firstControl - secondControl * 2 + end));
    const double wanted = std::sqrt(bend * kStepsOfBend);
    const int steps = static_cast<int>(wanted < kMostSteps - 1 ? wanted + 1 : kMostSteps);
    for (int step = 1; step <= steps; ++step) {
        const double t = static_cast<double>(step) / steps;
        const double u = 1 - t;
        lineTo(start * (u * u * u) + firstControl * (3 * u * u * t) +
               secondControl * (3 * u * t * t) + end * (t * t * t));
    }
}

void Path::close() {
    if (!m_parts.empty()) {
        m_parts.back().isClosed = true;
    }
}

void Path::addPolygon(std::span<const PointF> corners) {
    if (!corners.empty()) {
        m_parts.push_back({{corners.begin(), corners.end()}, true});
    }
}

void Path::addRoundBox(PointF topLeft, double width, double height, double radius) {
    if (!(width > 0 && height > 0)) {
        return;
    }
    const double r = std::clamp(radius, 0.0, std::min(width, height) / 2);
    // Clockwise; each corner comes in on one side and leaves on the next.
    const PointF corners[] = {{topLeft.x + width, topLeft.y},
                              {topLeft.x + width, topLeft.y + height},
                              {topLeft.x, topLeft.y + height},
                              topLeft};
    PointF in{1, 0};
    moveTo({topLeft.x + r, topLeft.y});
    for (const PointF& corner : corners) {
        const PointF out = turned(in);
        lineTo(corner - in * r);
        if (r > 0) {
            curveTo(corner - in * (r - r * kCircle), corner + out * (r - r * kCircle),
                    corner + out * r);
        }
        in = out;
    }
    close();
}

void Path::addArrowHead(PointF from, PointF tip, double length, double width) {
    if (lengthOf(tip - from) > kSamePoint) {
        const PointF along = direction(from, tip);
        const PointF across = turned(along) * (width / 2);
        const PointF base = tip - along * length;
        addPolygon(std::vector<PointF>{tip, base + across, base - across});
    }
}

Path Path::stroked(double width) const {
    Path result;
    if (!(width > 0)) {
        return result;
    }
    for (const Part& part : m_parts) {
        std::vector<PointF> points = distinctPoints(part);
        Pen pen(result, width);
        if (part.isClosed && points.size() > 2) {
            strokeClosed(std::move(points), pen);
        } else if (points.size() > 1) {
            strokeOpen(points, pen);
        }
    }
    return result;
}

Path Path::scaled(double factor) const {
    Path result = *this;
    for (Part& part : result.m_parts) {
        for (PointF& point : part.points) {
            point = {point.x * factor, point.y * factor};
        }
    }
    return result;
}

} // namespace platform
