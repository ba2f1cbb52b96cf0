// Sizing a window at its edges.
#pragma once

#include <QPoint>
#include <Qt>

#include "platform/Geometry.h"

namespace platform::qt {

/// The edges that a press at `at` in a window of `size` takes hold of; none inside its border. Near
/// a corner it takes hold of both.
[[nodiscard]] Qt::Edges edgesAt(Point at, Size size);

[[nodiscard]] Qt::CursorShape cursorOf(Qt::Edges edges);

/// `from` with `edges` moved, no smaller than `least`: the edges opposite stay.
[[nodiscard]] Rect sizedBy(const Rect& from, Qt::Edges edges, QPoint by, Size least);

} // namespace platform::qt
