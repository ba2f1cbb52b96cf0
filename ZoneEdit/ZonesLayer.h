// Draws the zone that is edited over the picture.
#pragma once

#include <memory>

#include "video/Layer.h"
#include "zone/ShapeDrawing.h"

namespace zone {
struct EditContext;
class ZoneManager;
} // namespace zone

namespace zoneedit {

class ZonesLayer final : public video::Layer {
public:
    ZonesLayer(std::shared_ptr<const zone::ZoneManager> zones,
               std::shared_ptr<zone::EditContext> context, zone::NumberFont font);

    /// Notes in the context where the frame's centre handle is shown.
    void paint(platform::Canvas& canvas, const video::PictureView& view, int frame) override;
    [[nodiscard]] platform::Rect area(const video::PictureView& view, int frame) const override;

private:
    std::shared_ptr<const zone::ZoneManager> m_zones;
    std::shared_ptr<zone::EditContext> m_context;
    zone::NumberFont m_font;
};

} // namespace zoneedit
