// Draws the outlines of all zones but the edited one over the picture, each with its name: dashed
// where the zone is not active. Part of the zone editor. UI thread only.
#pragma once

#include <memory>
#include <set>
#include <vector>

#include "platform/FontSet.h"
#include "platform/Geometry.h"
#include "video/Layer.h"

namespace video {
class CVideoUI;
}
namespace zone {
class Zone;
class ZoneSession;
} // namespace zone

namespace zoneedit {

class OutlinesLayer final : public video::Layer {
public:
    /// The layer of `video`. `fonts` outlive it.
    OutlinesLayer(const video::CVideoUI& video, std::shared_ptr<const zone::ZoneSession> session,
                  const platform::FontSet& fonts, platform::FontHandle font);

    void show(bool isShown) { m_isShown = isShown; }
    [[nodiscard]] bool isHidden(const std::shared_ptr<const zone::Zone>& zone) const {
        return m_hidden.contains(zone);
    }
    void setHidden(const std::shared_ptr<const zone::Zone>& zone, bool hidden);

    /// The zone whose name is at a point of the window, the uppermost; -1: none.
    [[nodiscard]] int tagAt(platform::Point at, int frame) const;

    void paint(platform::Canvas& canvas, const video::PictureView& view, int frame) override;
    [[nodiscard]] platform::Rect area(const video::PictureView& view, int frame) const override;

private:
    struct Tag {
        int zone = -1;
        platform::Rect place;
    };

    /// In the order of the list.
    [[nodiscard]] std::vector<Tag> tags(const video::PictureView& view, int frame) const;
    [[nodiscard]] std::vector<platform::Point> points(int zone, int frame) const;

    const video::CVideoUI& m_video;
    std::shared_ptr<const zone::ZoneSession> m_session;
    const platform::FontSet& m_fonts;
    platform::FontHandle m_font;
    /// By the author; some may be gone.
    std::set<std::weak_ptr<const zone::Zone>, std::owner_less<>> m_hidden;
    bool m_isShown = false;
};

} // namespace zoneedit
