// Draws where a thing was followed to on the frame on show, until the author accepts it: striped,
// as on the timeline. Part of the zone editor.
#pragma once

#include <map>
#include <utility>

#include "platform/Geometry.h"
#include "video/Layer.h"
#include "zone/ShapeEdits.h"

namespace zoneedit {

class FollowLayer final : public video::Layer {
public:
    using Shapes = std::map<int, zone::Points>; ///< by frame

    void show(int frame, zone::Points points) {
        m_shapes.insert_or_assign(frame, std::move(points));
    }
    void replace(Shapes shapes) { m_shapes = std::move(shapes); }
    void clear() { m_shapes.clear(); }
    [[nodiscard]] const Shapes& shapes() const { return m_shapes; }

    void paint(platform::Canvas& canvas, const video::PictureView& view, int frame) override;
    [[nodiscard]] platform::Rect area(const video::PictureView& view, int frame) const override;

private:
    Shapes m_shapes;
};

} // namespace zoneedit
