// Where things lie on several screens. Qt counts a window's place in pixels of the screen that most
// of it lies on; where screens differ in scale, the same number is another place for a window on
// another one. What they have in common are the pixels of the screens themselves.
#pragma once

#include "platform/Geometry.h"

class QScreen;

namespace platform::qt {

/// The place that a window on `from` counts as `at`, as one on `to` counts it.
[[nodiscard]] Point onScreen(Point at, const QScreen& from, const QScreen& to);
/// Pixels of a window on `to` for one of a window on `from`, in the size of the screens' own.
[[nodiscard]] double ratioBetween(const QScreen& from, const QScreen& to);
/// The screen at the place that a window on `from` counts as `at`; else the nearest.
[[nodiscard]] const QScreen& screenAt(Point at, const QScreen& from);
/// The work area of `screen`, as a window on `from` counts it.
[[nodiscard]] Rect workAreaOf(const QScreen& screen, const QScreen& from);

} // namespace platform::qt
