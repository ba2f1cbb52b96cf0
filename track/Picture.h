// Grey pictures as the tracker samples them: a pyramid of four levels, each half as wide and high
// as the one before. Values stay fractions on the smaller levels: rounded to whole grey values,
// soft pictures would lose what little they show.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "track/Geometry.h"

namespace track {

/// A picture of one byte a pixel, the top row first. Does not own it.
struct GreyView {
    const std::uint8_t* pixels = nullptr;
    int width = 0;
    int height = 0;
    std::ptrdiff_t rowBytes = 0;
};

/// One level: `width` x `height` grey values of 0 to 255, by rows without gaps.
class Plane {
public:
    void resize(int width, int height);
    [[nodiscard]] int width() const { return m_width; }
    [[nodiscard]] int height() const { return m_height; }
    [[nodiscard]] float* row(int y) { return m_values.data() + offset(y); }
    [[nodiscard]] const float* row(int y) const { return m_values.data() + offset(y); }
    /// Whether `at` may be asked for (x, y).
    [[nodiscard]] bool covers(float x, float y) const {
        return x >= 0 && y >= 0 && x < static_cast<float>(m_width - 1) &&
               y < static_cast<float>(m_height - 1);
    }
    /// Bilinear; only where the plane covers it.
    [[nodiscard]] float at(float x, float y) const {
        const int left = static_cast<int>(x);
        const int top = static_cast<int>(y);
        const float fx = x - static_cast<float>(left);
        const float fy = y - static_cast<float>(top);
        const float* upper = row(top) + left;
        const float* lower = upper + m_width;
        const float above = upper[0] + fx * (upper[1] - upper[0]);
        const float below = lower[0] + fx * (lower[1] - lower[0]);
        return above + fy * (below - above);
    }

private:
    [[nodiscard]] std::size_t offset(int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width);
    }

    std::vector<float> m_values;
    int m_width = 0;
    int m_height = 0;
};

class Pyramid {
public:
    static constexpr int kLevels = 4;

    /// Keeps nothing of the picture. Pictures of less than 16 pixels a side have fewer levels.
    void build(const GreyView& picture);
    /// Empty planes beyond levels().
    [[nodiscard]] const Plane& level(int index) const {
        return m_planes[static_cast<std::size_t>(index)];
    }
    [[nodiscard]] int levels() const { return m_levels; }

    /// Pixels of level 0 for one of `level`.
    [[nodiscard]] static double step(int level) { return static_cast<double>(1 << level); }
    /// Where a place of level 0 lies on `level`, and back: pixels are squares, so their centres
    /// shift by half a pixel.
    [[nodiscard]] static Point toLevel(Point p, int level) {
        const double k = 1 / step(level);
        return {(p.x + 0.5) * k - 0.5, (p.y + 0.5) * k - 0.5};
    }
    [[nodiscard]] static Point fromLevel(Point p, int level) {
        const double k = step(level);
        return {(p.x + 0.5) * k - 0.5, (p.y + 0.5) * k - 0.5};
    }

private:
    std::array<Plane, kLevels> m_planes;
    std::vector<float> m_row; ///< used while halving
    int m_levels = 0;
};

} // namespace track
