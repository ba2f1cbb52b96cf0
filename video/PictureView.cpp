#include "video/PictureView.h"

#include <algorithm>
#include <cmath>

namespace video {
namespace {

constexpr double kFarthest = 134217728.0; // 2^27: sums with sizes still fit an int

int cut(double value) {
    return static_cast<int>(std::clamp(std::floor(value), -kFarthest, kFarthest));
}

} // namespace

platform::Point PictureView::toWindow(platform::Point display) const {
    return {cut(offset.x + (display.x + 0.5) * scale), cut(offset.y + (display.y + 0.5) * scale)};
}

platform::Point PictureView::toDisplay(platform::Point window) const {
    return {cut((window.x + 0.5 - offset.x) / scale), cut((window.y + 0.5 - offset.y) / scale)};
}

platform::Rect PictureView::toWindow(const platform::Rect& display) const {
    return {cut(offset.x + display.left * scale), cut(offset.y + display.top * scale),
            -cut(-(offset.x + display.right * scale)), -cut(-(offset.y + display.bottom * scale))};
}

} // namespace video
