#include "ZoneEdit/ZonesLayer.h"

#include <cstddef>
#include <optional>
#include <utility>

#include "video/PictureView.h"
#include "zone/EditContext.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneSession.h"

namespace zoneedit {

ZonesLayer::ZonesLayer(std::shared_ptr<const zone::ZoneSession> session, zone::NumberFont font)
    : m_session(std::move(session)), m_font(font) {}

void ZonesLayer::paint(platform::Canvas& canvas, const video::PictureView& view, int frame) {
    const zone::EditContext& context = m_session->context();
    const std::shared_ptr<const zone::Zone> zone = m_session->zones().zone(context.currentZone);
    // Not worth a line in the log with every repaint.
    if (!zone || frame < 0 || frame >= zone->frameCount()) {
        return;
    }
    const auto index = static_cast<std::size_t>(context.currentZone);
    const int selected = index < context.zones.size() ? context.zones[index].selectedPoint : -1;
    const auto place = [&view](platform::Point point) { return view.toWindow(point); };
    zone->draw(frame, canvas, place, selected, m_font, m_edge);
}

platform::Rect ZonesLayer::area(const video::PictureView& view, int frame) const {
    const std::shared_ptr<const zone::Zone> zone =
        m_session->zones().zone(m_session->context().currentZone);
    const auto points = zone ? zone->points(frame) : std::nullopt;
    const auto place = [&view](platform::Point point) { return view.toWindow(point); };
    return points ? zone::drawnArea(*points, place) : platform::Rect{};
}

} // namespace zoneedit
