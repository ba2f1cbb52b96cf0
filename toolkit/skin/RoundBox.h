// Boxes with round corners, as badges, bars, handles and frames are drawn.
#pragma once

#include "platform/Canvas.h"
#include "platform/Color.h"
#include "platform/Geometry.h"

namespace toolkit {

/// The corners are smooth; the radius is cut down to half the shorter side.
void fillRoundBox(platform::Canvas& canvas, const platform::Rect& box, double radius,
                  platform::Color color);

/// The edge alone, inside the box, of one width all around.
void frameRoundBox(platform::Canvas& canvas, const platform::Rect& box, double radius, double width,
                   platform::Color color);

} // namespace toolkit
