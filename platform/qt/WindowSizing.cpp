#include "platform/qt/WindowSizing.h"

#include <algorithm>

#include "platform/Window.h"

namespace platform::qt {

Qt::Edges edgesAt(Point at, Size size) {
    constexpr int kCorner = 3 * kSizingBorder;
    const Rect inside{kSizingBorder, kSizingBorder, size.width - kSizingBorder,
                      size.height - kSizingBorder};
    Qt::Edges edges;
    if (inside.contains(at)) {
        return edges;
    }
    edges.setFlag(Qt::LeftEdge, at.x < kCorner);
    edges.setFlag(Qt::RightEdge, at.x >= size.width - kCorner);
    edges.setFlag(Qt::TopEdge, at.y < kCorner);
    edges.setFlag(Qt::BottomEdge, at.y >= size.height - kCorner);
    return edges;
}

Qt::CursorShape cursorOf(Qt::Edges edges) {
    const bool across = edges.testAnyFlags(Qt::LeftEdge | Qt::RightEdge);
    const bool upright = edges.testAnyFlags(Qt::TopEdge | Qt::BottomEdge);
    if (across && upright) {
        return edges.testFlag(Qt::LeftEdge) == edges.testFlag(Qt::TopEdge) ? Qt::SizeFDiagCursor
                                                                           : Qt::SizeBDiagCursor;
    }
    return across ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

Rect sizedBy(const Rect& from, Qt::Edges edges, QPoint by, Size least) {
    Rect to = from;
    if (edges.testFlag(Qt::LeftEdge)) {
        to.left = std::min(from.left + by.x(), from.right - least.width);
    } else if (edges.testFlag(Qt::RightEdge)) {
        to.right = std::max(from.right + by.x(), from.left + least.width);
    }
    if (edges.testFlag(Qt::TopEdge)) {
        to.top = std::min(from.top + by.y(), from.bottom - least.height);
    } else if (edges.testFlag(Qt::BottomEdge)) {
        to.bottom = std::max(from.bottom + by.y(), from.top + least.height);
    }
    return to;
}

} // namespace platform::qt
