#include "ZoneEdit/ZonesLayer.h"

#include <utility>

#include "zone/EditContext.h"
#include "zone/ZoneManager.h"

namespace zoneedit {

ZonesLayer::ZonesLayer(std::shared_ptr<const zone::ZoneManager> zones,
                       std::shared_ptr<zone::EditContext> context, zone::NumberFont font)
    : m_zones(std::move(zones)), m_context(std::move(context)), m_font(font) {}

void ZonesLayer::paint(platform::Canvas& canvas, const video::PictureView& view, int frame) {
    const std::shared_ptr<const zone::Zone> zone = m_zones->zone(m_context->currentZone);
    // Not worth a line in the log with every repaint.
    if (!zone || frame < 0 || frame >= zone->frameCount()) {
        return;
    }
    zone::ZoneEditing& editing = m_context->zone(m_context->currentZone);
    const auto place = [&view](platform::Point point) { return view.toWindow(point); };
    zone->draw(frame, canvas, place, editing.selectedPoint, m_font);
    editing.noteShown(*zone, frame);
}

platform::Rect ZonesLayer::area(const video::PictureView& view, int frame) const {
    const std::shared_ptr<const zone::Zone> zone = m_zones->zone(m_context->currentZone);
    const auto points = zone ? zone->points(frame) : std::nullopt;
    const auto place = [&view](platform::Point point) { return view.toWindow(point); };
    return points ? zone::drawnArea(*points, place) : platform::Rect{};
}

} // namespace zoneedit
