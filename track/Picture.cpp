#include "track/Picture.h"

#include <algorithm>

namespace track {
namespace {

constexpr int kLeastSide = 8;

/// Weights 1 3 3 1 in both directions, which leave less aliasing than the mean of four: Burt and
/// Adelson, "The Laplacian Pyramid as a Compact Image Code", IEEE Trans. Communications 31, 1983.
void halve(const Plane& from, Plane& to, std::vector<float>& column) {
    const int width = from.width() / 2;
    const int height = from.height() / 2;
    to.resize(width, height);
    column.resize(static_cast<std::size_t>(from.width()) + 2);
    float* sums = column.data() + 1; // with a pixel more at both ends
    for (int y = 0; y < height; ++y) {
        const float* r0 = from.row(std::max(0, 2 * y - 1));
        const float* r1 = from.row(2 * y);
        const float* r2 = from.row(2 * y + 1);
        const float* r3 = from.row(std::min(from.height() - 1, 2 * y + 2));
        for (int x = 0; x < from.width(); ++x) {
            sums[x] = r0[x] + 3 * (r1[x] + r2[x]) + r3[x];
        }
        sums[-1] = sums[0];
        sums[from.width()] = sums[from.width() - 1];
        float* out = to.row(y);
        for (int x = 0; x < width; ++x) {
            const float* s = sums + std::ptrdiff_t{2} * x;
            out[x] = (s[-1] + 3 * (s[0] + s[1]) + s[2]) * (1.0F / 64);
        }
    }
}

} // namespace

void Plane::resize(int width, int height) {
    m_width = width;
    m_height = height;
    m_values.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
}

void Pyramid::build(const GreyView& picture) {
    m_levels = 0;
    for (Plane& plane : m_planes) {
        if (m_levels == 0) {
            plane.resize(picture.width, picture.height);
            for (int y = 0; y < picture.height; ++y) {
                const std::uint8_t* in = picture.pixels + y * picture.rowBytes;
                std::copy_n(in, picture.width, plane.row(y));
            }
        } else {
            const Plane& larger = level(m_levels - 1);
            if (std::min(larger.width(), larger.height()) < 2 * kLeastSide) {
                break;
            }
            halve(larger, plane, m_row);
        }
        ++m_levels;
    }
}

} // namespace track
