// How the picture is zoomed and moved: the list in the caption, the wheel with Ctrl, the middle
// button, and dragging while Space is held. Part of the zone editor. UI thread only.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "ZoneEdit/EditedVideo.h"
#include "platform/Event.h"
#include "platform/Geometry.h"
#include "ui/Controls.h"
#include "zone/ZoneSession.h"

namespace zoneedit {

class ZoomPresenter {
public:
    /// All outlive it. `tapped` is called when Space is released and nothing was dragged with it.
    ZoomPresenter(ui::Controls controls, EditedVideo& video, zone::ZoneSession& session,
                  std::function<void()> tapped);
    ~ZoomPresenter();
    ZoomPresenter(const ZoomPresenter&) = delete;
    ZoomPresenter& operator=(const ZoomPresenter&) = delete;

    void showAll();
    /// The author chose an entry of the list.
    void choose();
    /// True when the event was handled.
    bool handle(const platform::Event& event);
    /// "All of it" is another scale now.
    void windowSized();

private:
    bool press(const platform::Event& event);
    bool move(platform::Point at);
    bool release(const platform::Event& event);
    bool key(const platform::Event& event);
    bool wheel(const platform::Event& event);
    void step(int by, platform::Point about);
    void zoomTo(double scale, platform::Point about);
    void showZoom();
    void showOverview();
    [[nodiscard]] bool isOnPicture(platform::Point at) const;

    ui::Controls m_controls;
    EditedVideo& m_video;
    zone::ZoneSession& m_session;
    std::function<void()> m_tapped;
    std::vector<int> m_percents;           ///< of the list's entries behind the first
    std::optional<platform::Point> m_from; ///< where the pointer was while it moves the picture
    platform::MouseButton m_button{};      ///< by which
    bool m_isLeftHeld = false;             ///< in a drag of something else
    int m_wheel = 0;                       ///< turned by less than a step
    bool m_isSpaceHeld = false;
    bool m_isDragged = false; ///< while Space is held
    bool m_isShowing = false; ///< the program fills the list
};

} // namespace zoneedit
