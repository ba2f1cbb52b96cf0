#include "platform/qt/QtConvert.h"

#include <algorithm>
#include <cmath>

namespace platform::qt {

QRegion roundedRegion(Size size, int radius) {
    QRegion region(0, 0, size.width, size.height);
    const int rows = std::min(radius, std::min(size.width, size.height) / 2);
    for (int row = 0; row < rows; ++row) {
        const double y = rows - row - 0.5;
        const auto cut = static_cast<int>(std::lround(rows - std::sqrt(rows * rows - y * y)));
        for (const int top : {row, size.height - 1 - row}) {
            region -= QRect(0, top, cut, 1);
            region -= QRect(size.width - cut, top, cut, 1);
        }
    }
    return region;
}

} // namespace platform::qt
