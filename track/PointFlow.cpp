#include "track/PointFlow.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <optional>

namespace track {
namespace {

constexpr int kReach = 7;
constexpr int kSide = 2 * kReach + 1;
constexpr int kMostSteps = 8;
constexpr double kMostReturn = 0.7;
constexpr float kLeastDeterminant = 1e4F; ///< of windows that show noise alone

template <int side>
using Window = std::array<float, static_cast<std::size_t>(side) * side>;

/// Samples a square around (x, y). False outside the plane.
template <int side>
bool sample(const Plane& plane, Point at, Window<side>& window) {
    constexpr int reach = side / 2;
    const int left = static_cast<int>(std::floor(at.x)) - reach;
    const int top = static_cast<int>(std::floor(at.y)) - reach;
    if (left < 0 || top < 0 || left + side >= plane.width() || top + side >= plane.height()) {
        return false;
    }
    const auto fx = static_cast<float>(at.x - std::floor(at.x));
    const auto fy = static_cast<float>(at.y - std::floor(at.y));
    const float a = (1 - fx) * (1 - fy);
    const float b = fx * (1 - fy);
    const float c = (1 - fx) * fy;
    const float d = fx * fy;
    float* out = window.data();
    for (int y = 0; y < side; ++y, out += side) {
        const float* upper = plane.row(top + y) + left;
        const float* lower = plane.row(top + y + 1) + left;
        for (int x = 0; x < side; ++x) {
            out[x] = a * upper[x] + b * upper[x + 1] + c * lower[x] + d * lower[x + 1];
        }
    }
    return true;
}

/// What the window around a point shows, ready to be looked for.
class Patch {
public:
    /// False when it shows too little.
    bool take(const Plane& plane, Point at) {
        Window<kSide + 2> wide;
        if (!sample<kSide + 2>(plane, at, wide)) {
            return false;
        }
        m_xx = m_xy = m_yy = m_mean = 0;
        std::size_t i = 0;
        for (std::size_t y = 1; y <= kSide; ++y) {
            for (std::size_t x = 1; x <= kSide; ++x, ++i) {
                const float* p = &wide[y * (kSide + 2) + x];
                m_values[i] = p[0];
                m_gx[i] = (p[1] - p[-1]) / 2;
                m_gy[i] = (p[kSide + 2] - p[-kSide - 2]) / 2;
                m_mean += p[0];
            }
        }
        m_mean /= static_cast<float>(m_values.size());
        for (i = 0; i < m_values.size(); ++i) {
            m_values[i] -= m_mean;
            m_xx += m_gx[i] * m_gx[i];
            m_xy += m_gx[i] * m_gy[i];
            m_yy += m_gy[i] * m_gy[i];
        }
        m_determinant = m_xx * m_yy - m_xy * m_xy;
        return m_determinant > kLeastDeterminant && m_determinant > 1e-3F * m_xx * m_yy;
    }

    /// Moves `at` to where `plane` shows the patch. False when that is outside.
    bool find(const Plane& plane, Point& at) const {
        Window<kSide> seen;
        for (int step = 0; step < kMostSteps; ++step) {
            if (!sample<kSide>(plane, at, seen)) {
                return false;
            }
            float sum = 0;
            for (const float value : seen) {
                sum += value;
            }
            const float mean = sum / static_cast<float>(seen.size());
            float bx = 0;
            float by = 0;
            for (std::size_t i = 0; i < seen.size(); ++i) {
                const float difference = m_values[i] + mean - seen[i];
                bx += difference * m_gx[i];
                by += difference * m_gy[i];
            }
            const float dx = (m_yy * bx - m_xy * by) / m_determinant;
            const float dy = (m_xx * by - m_xy * bx) / m_determinant;
            at.x += static_cast<double>(dx);
            at.y += static_cast<double>(dy);
            if (dx * dx + dy * dy < 4e-4F) {
                break;
            }
        }
        return true;
    }

private:
    Window<kSide> m_values{};
    Window<kSide> m_gx{};
    Window<kSide> m_gy{};
    float m_mean = 0;
    float m_xx = 0;
    float m_xy = 0;
    float m_yy = 0;
    float m_determinant = 0;
};

std::optional<Point> follow(const Pyramid& from, const Pyramid& to, Point point, Point guess) {
    Patch patch;
    for (int level = from.levels() - 1; level >= 0; --level) {
        const bool shows = patch.take(from.level(level), Pyramid::toLevel(point, level));
        Point at = Pyramid::toLevel(guess, level);
        if (shows && patch.find(to.level(level), at)) {
            guess = Pyramid::fromLevel(at, level);
        } else if (level == 0) {
            return std::nullopt;
        }
    }
    return guess;
}

} // namespace

std::vector<PointPair> followPoints(const Pyramid& from, const Pyramid& to,
                                    const std::vector<Point>& points, const Warp& guess) {
    std::vector<PointPair> pairs;
    for (const Point& point : points) {
        const std::optional<Point> found = follow(from, to, point, guess(point));
        const std::optional<Point> back =
            found ? follow(to, from, *found, point) : std::optional<Point>();
        if (back && std::hypot(back->x - point.x, back->y - point.y) <= kMostReturn) {
            pairs.push_back({point, *found});
        }
    }
    return pairs;
}

} // namespace track
