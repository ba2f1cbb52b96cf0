// Stills and video pictures at any size, smooth: the small pictures of a map, a list or a timeline,
// the large one of a preview or a zoomed view. In whole numbers, so that every system gets the same
// pixels.
#pragma once

#include "platform/Bitmap.h"
#include "platform/FrameBuffer.h"
#include "platform/Geometry.h"
#include "platform/raster/PixelView.h"

namespace platform::raster {

/// Lays the whole still on `place`, blended by its alpha, between the four nearest pixels. One that
/// is reduced to less than half is halved first as often as that takes, which reads all of it: keep
/// stills near the size they are shown at. `clip` lies inside the target, and a pixel does not
/// depend on it.
void drawStill(const Bitmap& still, PixelView target, const Rect& place, const Rect& clip);
/// The same for the whole frame, whose pixels become opaque.
void drawFrameSmoothly(const FrameBuffer& frame, PixelView target, const Rect& place,
                       const Rect& clip);

} // namespace platform::raster
