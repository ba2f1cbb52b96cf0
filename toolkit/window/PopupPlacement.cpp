#include "toolkit/window/PopupPlacement.h"

#include <algorithm>

namespace toolkit {

platform::Rect placeDropList(const platform::Rect& anchor, platform::Size size,
                             const platform::Rect& workArea) {
    const auto kept = [&](int y) { return std::clamp(y, workArea.top, workArea.bottom); };
    const int top = kept(anchor.top);
    const int bottom = kept(anchor.bottom);
    const int below = workArea.bottom - bottom;
    const int above = top - workArea.top;
    const bool flips = size.height > below && above > below;
    const int height = std::clamp(size.height, 1, std::max(flips ? above : below, 1));
    const int width = std::min(size.width, std::max(workArea.width(), 1));
    const int x =
        std::clamp(anchor.left, workArea.left, std::max(workArea.left, workArea.right - width));
    return platform::Rect::at(x, flips ? top - height : bottom, width, height);
}

platform::Rect placeMenu(const platform::Rect& anchor, platform::Size size, platform::Size window) {
    static constexpr int kGap = 2;
    static constexpr int kMargin = 4;
    const auto kept = [](int start, int length, int end) {
        return std::max(std::min(start, end - kMargin - length), kMargin);
    };
    const int above = anchor.top - kGap - size.height;
    const int below = anchor.bottom + kGap;
    const bool fitsBelow = below + size.height <= window.height - kMargin;
    const int y = fitsBelow || above < kMargin ? kept(below, size.height, window.height) : above;
    return platform::Rect::at(kept(anchor.left, size.width, window.width), y, size.width,
                              size.height);
}

platform::Rect placeToolTip(platform::Point pointer, int distance, platform::Size size,
                            const platform::Rect& workArea) {
    int y = pointer.y + distance;
    if (y + size.height > workArea.bottom) {
        y = std::max(workArea.top, pointer.y - distance / 2 - size.height);
    }
    const int x =
        std::clamp(pointer.x, workArea.left, std::max(workArea.left, workArea.right - size.width));
    return platform::Rect::at(x, y, size.width, size.height);
}

} // namespace toolkit
