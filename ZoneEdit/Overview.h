// The whole picture in small, with a frame round the part that the zoomed picture shows. A press or
// a drag on it brings that place to the middle. Part of the zone editor. UI thread only.
#pragma once

#include <cstdint>
#include <string>

#include "platform/Accessible.h"
#include "platform/Bitmap.h"
#include "platform/Canvas.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/input/TEventUI.h"

namespace video {
class CVideoUI;
}

namespace zoneedit {

class Overview final : public toolkit::CControlUI {
public:
    /// It outlives this one's use; null: there is nothing to show.
    void setVideo(video::CVideoUI* video) { m_video = video; }

    [[nodiscard]] std::u16string GetClass() const override { return u"Overview"; }
    bool DoEvent(const toolkit::TEventUI& event) override;
    void DoPaint(platform::Canvas& canvas, const Rect& dirty) override;
    [[nodiscard]] bool isInteractive() const override { return true; }
    /// A second look at what the window shows already.
    [[nodiscard]] platform::AccessibleState accessibleState() const override;

private:
    [[nodiscard]] Rect shownPart() const;
    void refresh();
    void goTo(Point at);

    video::CVideoUI* m_video = nullptr;
    platform::Bitmap m_small;
    std::uint64_t m_smallId = 0; ///< which picture it is made of
    bool m_isHeld = false;
};

} // namespace zoneedit
