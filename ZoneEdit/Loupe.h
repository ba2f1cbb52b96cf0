// The surroundings of the pointer, four times as large as the picture shows them, with the lines of
// the edited zone. In the zones' pane while that is shown, else over the picture's corner. Part of
// the zone editor. UI thread only.
#pragma once

#include <memory>
#include <string>

#include "platform/Accessible.h"
#include "platform/Canvas.h"
#include "toolkit/controls/CControlUI.h"

namespace video {
class CVideoUI;
struct PictureView;
} // namespace video
namespace zone {
class ZoneSession;
}

namespace zoneedit {

class Loupe final : public toolkit::CControlUI {
public:
    /// The video outlives this one's use.
    void show(video::CVideoUI* video, std::shared_ptr<const zone::ZoneSession> session);
    /// The pointer is at that point of the window; points beside the picture change nothing.
    void pointAt(Point at);

    [[nodiscard]] std::u16string GetClass() const override { return u"Loupe"; }
    void beforeLayout(Size content) override;
    void DoPaint(platform::Canvas& canvas, const Rect& dirty) override;
    /// A second look at what the window shows already.
    [[nodiscard]] platform::AccessibleState accessibleState() const override;

private:
    void paintLines(platform::Canvas& canvas, const video::PictureView& view) const;
    [[nodiscard]] double scale() const;

    video::CVideoUI* m_video = nullptr;
    std::shared_ptr<const zone::ZoneSession> m_session;
    Point m_center{640, 360}; ///< the display pixel in the middle
};

} // namespace zoneedit
