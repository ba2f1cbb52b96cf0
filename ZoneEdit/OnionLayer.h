// Draws the edited zone's shapes at the keys before and after the frame on show over the picture.
// Part of the zone editor. UI thread only.
#pragma once

#include <memory>
#include <optional>

#include "platform/Color.h"
#include "platform/Geometry.h"
#include "video/Layer.h"
#include "zone/SessionKeys.h"

namespace zone {
class ZoneSession;
}

namespace zoneedit {

class OnionLayer final : public video::Layer {
public:
    explicit OnionLayer(std::shared_ptr<zone::ZoneSession> session,
                        std::shared_ptr<zone::SessionKeys> keys);

    void show(bool isShown) { m_isShown = isShown; }

    void paint(platform::Canvas& canvas, const video::PictureView& view, int frame) override;
    [[nodiscard]] platform::Rect area(const video::PictureView& view, int frame) const override;

private:
    void paintKey(platform::Canvas& canvas, const video::PictureView& view, std::optional<int> key,
                  platform::Color color) const;

    std::shared_ptr<zone::ZoneSession> m_session;
    std::shared_ptr<zone::SessionKeys> m_keys;
    bool m_isShown = false;
};

} // namespace zoneedit
