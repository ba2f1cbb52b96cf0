// Points, sizes and rectangles in whole pixels, used by every layer that draws or takes mouse
// input.
#pragma once

#include <algorithm>

namespace platform {

struct Point {
    int x = 0;
    int y = 0;
    bool operator==(const Point&) const = default;
};

struct Size {
    int width = 0;
    int height = 0;
    bool operator==(const Size&) const = default;
};

/// Left and top belong to the rectangle, right and bottom do not.
struct Rect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    static constexpr Rect at(int x, int y, int width, int height) {
        return {x, y, x + width, y + height};
    }
    [[nodiscard]] constexpr int width() const { return right - left; }
    [[nodiscard]] constexpr int height() const { return bottom - top; }
    [[nodiscard]] constexpr Size size() const { return {width(), height()}; }
    [[nodiscard]] constexpr Point topLeft() const { return {left, top}; }
    [[nodiscard]] constexpr bool isEmpty() const { return right <= left || bottom <= top; }
    [[nodiscard]] constexpr bool contains(Point p) const {
        return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
    }
    [[nodiscard]] constexpr Rect intersected(const Rect& other) const {
        return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
                std::min(bottom, other.bottom)};
    }
    /// The smallest rectangle around both; an empty one adds nothing.
    [[nodiscard]] constexpr Rect united(const Rect& other) const {
        if (isEmpty()) {
            return other;
        }
        if (other.isEmpty()) {
            return *this;
        }
        return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
                std::max(bottom, other.bottom)};
    }
    /// A rectangle of `size` with the same centre; an odd pixel is at the right and bottom.
    [[nodiscard]] constexpr Rect centred(Size size) const {
        return at(left + (width() - size.width) / 2, top + (height() - size.height) / 2, size.width,
                  size.height);
    }
    /// Moved into `area` by the shortest way; aligned left or top where it is too large.
    [[nodiscard]] constexpr Rect movedInto(const Rect& area) const {
        return at(std::max(std::min(left, area.right - width()), area.left),
                  std::max(std::min(top, area.bottom - height()), area.top), width(), height());
    }
    [[nodiscard]] constexpr Rect translated(int dx, int dy) const {
        return {left + dx, top + dy, right + dx, bottom + dy};
    }
    bool operator==(const Rect&) const = default;
};

} // namespace platform
