// Draws a timeline. The work grows with the pixels and with the keys in view, not with the frames.
#pragma once

#include "ZoneEdit/FrameSelection.h"
#include "ZoneEdit/TimeScale.h"
#include "ZoneEdit/Timeline.h"
#include "platform/Canvas.h"
#include "platform/FontSet.h"
#include "platform/Geometry.h"
#include "toolkit/skin/Palette.h"

namespace zoneedit {

/// The bar of a timeline at `area`, on which `scale` stands.
[[nodiscard]] platform::Rect barOf(const platform::Rect& area);
/// The grips of a range: what can be dragged at its first and at its last frame.
[[nodiscard]] platform::Rect beginGrip(const platform::Rect& area, const TimeScale& scale,
                                       const FrameSpan& span);
[[nodiscard]] platform::Rect endGrip(const platform::Rect& area, const TimeScale& scale,
                                     const FrameSpan& span);
/// What the playhead covers.
[[nodiscard]] platform::Rect playhead(const platform::Rect& area, const TimeScale& scale,
                                      int frame);

class TimelinePainter {
public:
    /// All outlive it.
    TimelinePainter(platform::Canvas& canvas, const platform::Rect& area, const TimeScale& scale,
                    const toolkit::Palette& colors)
        : m_canvas(canvas), m_area(area), m_scale(scale), m_colors(colors), m_bar(barOf(area)) {}

    /// Only where there is room for it.
    void ruler(double framesPerSecond, platform::FontHandle font) const;
    void runs(const TimelineMarks& marks) const;
    void offered(const zone::FrameRange& frames) const;
    void range(const FrameSpan& span) const;
    void keys(const TimelineMarks& marks) const;
    void playhead(int frame) const;
    /// Which part is shown, unless it is all.
    void part() const;

private:
    [[nodiscard]] int x(double frame) const;
    /// Cut to the bar; empty where it is not in view.
    [[nodiscard]] platform::Rect onBar(double first, double last) const;
    void key(double middle) const;
    void keyBar(double first, double last) const;

    platform::Canvas& m_canvas;
    platform::Rect m_area;
    const TimeScale& m_scale;
    const toolkit::Palette& m_colors;
    platform::Rect m_bar;
};

} // namespace zoneedit
