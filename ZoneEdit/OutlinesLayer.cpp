#include "ZoneEdit/OutlinesLayer.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "ZoneEdit/OutlinePath.h"
#include "core/Text.h"
#include "platform/Canvas.h"
#include "toolkit/skin/Palette.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "video/CVideoUI.h"
#include "video/PictureView.h"
#include "zone/EditContext.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneSession.h"

namespace zoneedit {
namespace {

using platform::Rect;

constexpr double kLineWidth = 1.5;
constexpr Dashes kInactive{3, 4};
constexpr int kTagHeight = 18;
constexpr int kTagGap = 4; ///< above the outline
constexpr int kTagBar = 4; ///< of the zone's colour, at the left
constexpr int kTagPadding = 6;
constexpr int kWidestName = 240;

} // namespace

OutlinesLayer::OutlinesLayer(const video::CVideoUI& video,
                             std::shared_ptr<const zone::ZoneSession> session,
                             const platform::FontSet& fonts, platform::FontHandle font)
    : m_video(video), m_session(std::move(session)), m_fonts(fonts), m_font(font) {}

void OutlinesLayer::setHidden(const std::shared_ptr<const zone::Zone>& zone, bool hidden) {
    if (hidden) {
        m_hidden.insert(zone);
    } else {
        m_hidden.erase(zone);
    }
}

std::vector<platform::Point> OutlinesLayer::points(int zone, int frame) const {
    const std::shared_ptr<const zone::Zone> found = m_session->zones().zone(zone);
    const bool isShown = m_isShown && found && !isHidden(found) && frame >= 0 &&
                         frame < found->frameCount() && zone != m_session->context().currentZone;
    const auto shown = isShown ? found->points(frame) : std::nullopt;
    return shown ? std::vector<platform::Point>(shown->begin(), shown->end())
                 : std::vector<platform::Point>();
}

std::vector<OutlinesLayer::Tag> OutlinesLayer::tags(const video::PictureView& view,
                                                    int frame) const {
    std::vector<Tag> tags;
    for (int zone = 0; m_isShown && zone < m_session->zones().zoneCount(); ++zone) {
        const std::vector<platform::Point> shape = points(zone, frame);
        if (shape.empty()) {
            continue;
        }
        platform::Point corner = view.toWindow(shape.front());
        for (const platform::Point& point : shape) {
            const platform::Point at = view.toWindow(point);
            corner = {std::min(corner.x, at.x), std::min(corner.y, at.y)};
        }
        const std::u16string name = core::displayText(m_session->zones().getZoneName(zone));
        const int width = std::min(m_fonts.measure(name, m_font).width + 1, kWidestName);
        const Rect wanted = Rect::at(corner.x, corner.y - kTagGap - kTagHeight,
                                     kTagBar + 2 * kTagPadding + width, kTagHeight);
        tags.push_back({zone, wanted.movedInto(m_video.pictureRect())});
    }
    return tags;
}

int OutlinesLayer::tagAt(platform::Point at, int frame) const {
    const std::vector<Tag> shown = tags(m_video.view(), frame);
    const auto hit = std::find_if(shown.rbegin(), shown.rend(),
                                  [at](const Tag& tag) { return tag.place.contains(at); });
    return hit != shown.rend() ? hit->zone : -1;
}

void OutlinesLayer::paint(platform::Canvas& canvas, const video::PictureView& view, int frame) {
    const zone::ZoneManager& zones = m_session->zones();
    const int edited = m_session->context().currentZone;
    for (int zone = 0; m_isShown && zone < zones.zoneCount(); ++zone) {
        const std::vector<platform::Point> shape = points(zone, frame);
        if (!shape.empty()) {
            const bool isActive = zones.zone(zone)->isActive(frame);
            canvas.fillPath(outlinePath(shape, view, canvas.clip(), kLineWidth,
                                        isActive ? std::nullopt : std::optional(kInactive)),
                            zoneColor(zone, edited));
        }
    }
    const toolkit::Palette& colors = m_video.GetManager()->look().palette();
    for (const auto& [zone, place] : tags(view, frame)) {
        canvas.fillRect(place, colors[toolkit::Tone::tag]);
        canvas.fillRect(Rect::at(place.left, place.top, kTagBar, place.height()),
                        zoneColor(zone, edited));
        canvas.drawText(core::displayText(zones.getZoneName(zone)),
                        {place.left + kTagBar + kTagPadding, place.top, place.right - kTagPadding,
                         place.bottom},
                        m_font, colors[toolkit::Tone::onTag], platform::TextAlign::left);
    }
}

Rect OutlinesLayer::area(const video::PictureView& /*view*/, int /*frame*/) const {
    return m_isShown ? m_video.pictureRect() : Rect{};
}

} // namespace zoneedit
