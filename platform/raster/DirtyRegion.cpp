#include "platform/raster/DirtyRegion.h"

#include <cstddef>
#include <utility>

namespace platform::raster {

namespace {

/// Beyond this many, keeping the parts apart costs more than painting the space between them.
constexpr std::size_t kMaxRects = 32;

} // namespace

void DirtyRegion::add(const Rect& rect) {
    if (rect.isEmpty()) {
        return;
    }
    Rect joined = rect;
    bool grown = true;
    while (grown) { // a joined rectangle may meet others that its parts did not
        grown = false;
        for (std::size_t i = 0; i < m_rects.size(); ++i) {
            if (!m_rects[i].intersected(joined).isEmpty() || m_rects.size() >= kMaxRects) {
                joined = joined.united(m_rects[i]);
                m_rects[i] = m_rects.back();
                m_rects.pop_back();
                grown = true;
                break;
            }
        }
    }
    m_rects.push_back(joined);
}

std::vector<Rect> DirtyRegion::take() {
    return std::exchange(m_rects, {});
}

} // namespace platform::raster
