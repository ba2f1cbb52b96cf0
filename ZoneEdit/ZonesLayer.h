// Draws the zone that is edited over the picture.
#pragma once

#include <memory>

#include "platform/Geometry.h"
#include "video/Layer.h"
#include "zone/ShapeDrawing.h"

namespace zone {
class ZoneSession;
}

namespace zoneedit {

class ZonesLayer final : public video::Layer {
public:
    ZonesLayer(std::shared_ptr<const zone::ZoneSession> session, zone::NumberFont font);

    void setEdge(zone::LineEdge edge) { m_edge = edge; }
    void paint(platform::Canvas& canvas, const video::PictureView& view, int frame) override;
    [[nodiscard]] platform::Rect area(const video::PictureView& view, int frame) const override;

private:
    std::shared_ptr<const zone::ZoneSession> m_session;
    zone::NumberFont m_font;
    zone::LineEdge m_edge = zone::LineEdge::none;
};

} // namespace zoneedit
