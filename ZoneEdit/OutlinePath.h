// The outlines of shapes as paths to fill, and the colours of zones that are not edited.
#pragma once

#include <optional>
#include <span>

#include "platform/Color.h"
#include "platform/Geometry.h"
#include "platform/Path.h"
#include "video/PictureView.h"

namespace zoneedit {

struct Dashes {
    double drawn = 0;
    double left = 0; ///< between two that are drawn
};

/// What a pen of this width covers along the closed outline of a shape, as far as that is inside
/// `clip`. Two points are one line.
[[nodiscard]] platform::Path outlinePath(std::span<const platform::Point> points,
                                         const video::PictureView& view, const platform::Rect& clip,
                                         double width, std::optional<Dashes> dashes = {});

/// Of the zone that is edited.
inline constexpr platform::Color kEditedColor = 0xFFFF0000;
/// Of zone `number`, counted among those that are not edited.
[[nodiscard]] platform::Color outlineColor(int number);
/// Of zone `zone` of the list.
[[nodiscard]] platform::Color zoneColor(int zone, int edited);

} // namespace zoneedit
