// A filled box with round corners, as badges, bars and handles are drawn.
#pragma once

#include "platform/Canvas.h"
#include "platform/Color.h"
#include "platform/Geometry.h"

namespace toolkit {

/// The corners are smooth; the radius is cut down to half the shorter side.
void fillRoundBox(platform::Canvas& canvas, const platform::Rect& box, double radius,
                  platform::Color color);

} // namespace toolkit
