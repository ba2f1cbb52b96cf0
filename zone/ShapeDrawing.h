// How a shape looks over the picture.
#pragma once

#include <cstddef>
#include <functional>
#include <span>

#include "platform/Canvas.h"
#include "platform/FontSet.h"
#include "platform/Geometry.h"

namespace zone {

/// More points than this are not painted: a damaged file may claim any number, and painting them
/// must not freeze the window. No author draws as many.
inline constexpr std::size_t kMaxPaintedPoints = 10'000;

/// Of a handle on the screen, in window pixels.
inline constexpr int kHandleSide = 16;

/// What point numbers are written in.
struct NumberFont {
    platform::FontHandle handle = 0;
    /// Measures the numbers; not owned. With none a number takes 16 x 16.
    const platform::FontSet* fonts = nullptr;
};

/// Gives the window pixel at which a display pixel is shown.
using Placement = std::function<platform::Point(platform::Point)>;

/// Whether lines and handles have a thin dark edge, by which they stand out on their own colour.
enum class LineEdge { none, dark };

/// Paints lines, centre handle and numbered point handles. Lines and handles have one size however
/// large the picture is shown.
void drawShape(platform::Canvas& canvas, std::span<const platform::Point> points, bool active,
               const Placement& place, int selectedIndex, NumberFont font,
               LineEdge edge = LineEdge::none);

/// All window pixels that drawShape may change.
[[nodiscard]] platform::Rect drawnArea(std::span<const platform::Point> points,
                                       const Placement& place);

} // namespace zone
