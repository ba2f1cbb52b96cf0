// Where layout pixels are on the screen. Rectangles are mapped by their edges, so that neighbours
// meet at any scale.
#pragma once

#include <algorithm>
#include <cmath>

#include "platform/Geometry.h"

namespace platform::raster {

class PixelScale {
public:
    /// One to one.
    PixelScale() = default;
    /// `layout` pixels fill `device`, each `factor` large; what rounding leaves goes to the last.
    PixelScale(double factor, Size layout, Size device)
        : m_factor(factor), m_layout(layout), m_device(device) {}

    [[nodiscard]] double factor() const { return m_factor; }
    [[nodiscard]] bool isOne() const { return m_factor == 1; }
    [[nodiscard]] int x(int at) const { return mapped(at, m_layout.width, m_device.width); }
    [[nodiscard]] int y(int at) const { return mapped(at, m_layout.height, m_device.height); }
    [[nodiscard]] Rect rect(const Rect& r) const {
        return isOne() ? r : Rect{x(r.left), y(r.top), x(r.right), y(r.bottom)};
    }
    /// How thick a line of `width` is: in whole pixels, and the same everywhere.
    [[nodiscard]] int line(int width) const {
        return isOne() ? width : std::max(rounded(std::floor(width * m_factor + kSlack)), 1);
    }

private:
    static constexpr double kSlack = 1e-6;
    static constexpr double kMost = 1e9;

    [[nodiscard]] static int rounded(double at) {
        return static_cast<int>(std::floor(std::clamp(at, -kMost, kMost) + 0.5));
    }
    [[nodiscard]] int mapped(int at, int layout, int device) const {
        if (isOne()) {
            return at;
        }
        return layout > 0 && at >= layout
                   ? rounded(device + (static_cast<double>(at) - layout) * m_factor)
                   : rounded(at * m_factor);
    }

    double m_factor = 1;
    Size m_layout; ///< empty: without an end
    Size m_device;
};

} // namespace platform::raster
