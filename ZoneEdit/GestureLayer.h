// What a drag of a whole shape shows over the picture: the shape before it, in white dashes, or the
// rectangle that it draws. Part of the zone editor.
#pragma once

#include <utility>

#include "platform/Geometry.h"
#include "video/Layer.h"
#include "zone/ShapeEdits.h"

namespace zoneedit {

class GestureLayer final : public video::Layer {
public:
    /// Empty: nothing.
    void showBefore(zone::Points points) { m_before = std::move(points); }
    void showDrawn(zone::Points points) { m_drawn = std::move(points); }
    void clear() {
        m_before.clear();
        m_drawn.clear();
    }

    void paint(platform::Canvas& canvas, const video::PictureView& view, int frame) override;
    [[nodiscard]] platform::Rect area(const video::PictureView& view, int frame) const override;

private:
    zone::Points m_before;
    zone::Points m_drawn;
};

} // namespace zoneedit
