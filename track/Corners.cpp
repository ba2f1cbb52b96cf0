#include "track/Corners.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

namespace track {
namespace {

constexpr int kReach = 3; ///< half the side of the window that gradients are summed over
constexpr int kBorder = 8;
constexpr double kMostPixels = 40000;
constexpr float kLeastQuality = 100; ///< summed squared gradients of noise alone stay below
constexpr float kWorstToBest = 0.01F;
constexpr double kLeastApart = 4;

struct Corner {
    float quality;
    Point at;
};

/// Sums of gxx, gxy and gyy in the window around each pixel of an area of a plane.
class Moments {
public:
    Moments(const Plane& plane, int left, int top, int width, int height)
        : m_width(width), m_height(height) {
        for (auto& sums : m_sums) {
            sums.assign(count(width) * count(height), 0);
        }
        for (int y = 0; y < height; ++y) {
            addRow(plane, left, top + y, y);
        }
        for (auto& sums : m_sums) {
            sumColumns(sums);
        }
    }

    /// The smaller eigenvalue. (x, y) is at least kReach away from the area's edges.
    [[nodiscard]] float quality(int x, int y) const {
        const std::size_t i = index(x, y);
        const float a = m_sums[0][i];
        const float b = m_sums[1][i];
        const float c = m_sums[2][i];
        return (a + c) / 2 - std::sqrt((a - c) * (a - c) / 4 + b * b);
    }

private:
    static std::size_t count(int n) { return static_cast<std::size_t>(n); }
    [[nodiscard]] std::size_t index(int x, int y) const {
        return count(y) * count(m_width) + count(x);
    }

    /// Stores the sums along the row.
    void addRow(const Plane& plane, int left, int pictureY, int y) {
        m_row.resize(3 * count(m_width));
        const float* above = plane.row(pictureY - 1) + left;
        const float* here = plane.row(pictureY) + left;
        const float* below = plane.row(pictureY + 1) + left;
        for (int x = 0; x < m_width; ++x) {
            const float gx = here[x + 1] - here[x - 1];
            const float gy = below[x] - above[x];
            m_row[count(x)] = gx * gx;
            m_row[count(x + m_width)] = gx * gy;
            m_row[count(x + 2 * m_width)] = gy * gy;
        }
        for (int kind = 0; kind < 3; ++kind) {
            const float* in = m_row.data() + count(kind * m_width);
            float* out = m_sums[count(kind)].data() + index(0, y);
            for (int x = kReach; x + kReach < m_width; ++x) {
                float sum = 0;
                for (int d = -kReach; d <= kReach; ++d) {
                    sum += in[x + d];
                }
                out[x] = sum;
            }
        }
    }

    void sumColumns(std::vector<float>& sums) const {
        std::vector<float> result(sums.size());
        for (int y = kReach; y + kReach < m_height; ++y) {
            float* out = result.data() + index(0, y);
            for (int d = -kReach; d <= kReach; ++d) {
                const float* in = sums.data() + index(0, y + d);
                for (int x = 0; x < m_width; ++x) {
                    out[x] += in[x];
                }
            }
        }
        sums.swap(result);
    }

    int m_width;
    int m_height;
    std::array<std::vector<float>, 3> m_sums;
    std::vector<float> m_row;
};

/// The best ones that are `apart` from all better ones.
std::vector<Point> spread(std::vector<Corner> corners, double apart, int most) {
    std::ranges::sort(corners,
                      [](const Corner& a, const Corner& b) { return a.quality > b.quality; });
    std::vector<Point> chosen;
    for (const Corner& corner : corners) {
        if (static_cast<int>(chosen.size()) == most ||
            corner.quality < corners[0].quality * kWorstToBest) {
            break;
        }
        if (std::ranges::none_of(chosen, [&](Point p) {
                return std::abs(p.x - corner.at.x) < apart && std::abs(p.y - corner.at.y) < apart;
            })) {
            chosen.push_back(corner.at);
        }
    }
    return chosen;
}

} // namespace

std::vector<Point> findCorners(const Pyramid& picture, const Polygon& polygon, int most) {
    const Box box = boundsOf(polygon);
    int level = 0;
    while (level + 1 < picture.levels() &&
           box.width() * box.height() > kMostPixels * Pyramid::step(2 * level)) {
        ++level;
    }
    const Plane& plane = picture.level(level);
    const Point from = Pyramid::toLevel({box.left, box.top}, level);
    const Point to = Pyramid::toLevel({box.right, box.bottom}, level);
    const auto inside = [](double value, int size) {
        return static_cast<int>(
            std::clamp<double>(value, kBorder, std::max(kBorder, size - kBorder)));
    };
    const int left = inside(from.x - kReach, plane.width());
    const int top = inside(from.y - kReach, plane.height());
    const int width = inside(to.x + kReach + 1, plane.width()) - left;
    const int height = inside(to.y + kReach + 1, plane.height()) - top;
    if (width <= 2 * kReach || height <= 2 * kReach) {
        return {};
    }
    const Moments moments(plane, left, top, width, height);
    std::vector<Corner> corners;
    for (int y = kReach; y + kReach < height; ++y) {
        for (int x = kReach; x + kReach < width; ++x) {
            const float quality = moments.quality(x, y);
            const Point at = Pyramid::fromLevel(
                {static_cast<double>(left + x), static_cast<double>(top + y)}, level);
            if (quality > kLeastQuality && contains(polygon, at)) {
                corners.push_back({quality, at});
            }
        }
    }
    const double apart = std::sqrt(box.width() * box.height() / most) * 0.6;
    return spread(std::move(corners), std::max(kLeastApart, apart), most);
}

} // namespace track
