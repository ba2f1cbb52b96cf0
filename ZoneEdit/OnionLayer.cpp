#include "ZoneEdit/OnionLayer.h"

#include <utility>

#include "ZoneEdit/OutlinePath.h"
#include "platform/Canvas.h"
#include "video/PictureView.h"
#include "zone/EditContext.h"
#include "zone/ShapeDrawing.h"
#include "zone/ShapeKeys.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneSession.h"

namespace zoneedit {
namespace {

constexpr platform::Color kBefore = 0xFF59A9FF;
constexpr platform::Color kAfter = 0xFF7BE0A8;
constexpr Dashes kDashes{5, 4};

} // namespace

OnionLayer::OnionLayer(std::shared_ptr<zone::ZoneSession> session,
                       std::shared_ptr<zone::SessionKeys> keys)
    : m_session(std::move(session)), m_keys(std::move(keys)) {}

void OnionLayer::paint(platform::Canvas& canvas, const video::PictureView& view, int frame) {
    if (m_isShown && frame >= 0) {
        const zone::ShapeKeys& keys = m_keys->of(m_session->context().currentZone);
        paintKey(canvas, view, keys.before(frame), kBefore);
        paintKey(canvas, view, keys.after(frame), kAfter);
    }
}

void OnionLayer::paintKey(platform::Canvas& canvas, const video::PictureView& view,
                          std::optional<int> key, platform::Color color) const {
    const std::shared_ptr<const zone::Zone> zone =
        m_session->zones().zone(m_session->context().currentZone);
    const auto points = zone && key ? zone->points(*key) : std::nullopt;
    if (points) {
        canvas.fillPath(outlinePath(*points, view, canvas.clip(), 1, kDashes), color);
    }
}

platform::Rect OnionLayer::area(const video::PictureView& view, int frame) const {
    platform::Rect area;
    const std::shared_ptr<const zone::Zone> zone =
        m_session->zones().zone(m_session->context().currentZone);
    if (!m_isShown || frame < 0 || !zone) {
        return area;
    }
    const zone::ShapeKeys& keys = m_keys->of(m_session->context().currentZone);
    const auto place = [&view](platform::Point point) { return view.toWindow(point); };
    for (const std::optional<int> key : {keys.before(frame), keys.after(frame)}) {
        if (const auto points = key ? zone->points(*key) : std::nullopt) {
            area = area.united(zone::drawnArea(*points, place));
        }
    }
    return area;
}

} // namespace zoneedit
