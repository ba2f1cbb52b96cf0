// The parts of the zone editor that decide what of the picture is on show, and what is drawn over
// it: zoom, layers, loupe and their switches. Makes them, binds their commands and hands events on
// to them. UI thread only.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "ZoneEdit/EditedVideo.h"
#include "ZoneEdit/ViewToggles.h"
#include "ZoneEdit/ZoomPresenter.h"
#include "platform/Event.h"
#include "platform/FontSet.h"
#include "ui/Controls.h"
#include "zone/SessionKeys.h"
#include "zone/ZoneSession.h"

namespace core {
class EditorSettings;
}
namespace ui {
class CommandSet;
}

namespace zoneedit {

class OnionLayer;
class OutlinesLayer;
class ZonesLayer;

class ViewParts {
public:
    /// What they work with. All outlive them.
    struct Links {
        ui::Controls controls;
        EditedVideo& video;
        std::shared_ptr<zone::ZoneSession> session;
        std::shared_ptr<zone::SessionKeys> keys;
        const platform::FontSet& fonts;
        core::EditorSettings* settings; ///< may be null
        std::function<void()> changed;  ///< another part of the window is shown
    };
    ViewParts(ui::CommandSet& commands, Links links);
    ~ViewParts();

    /// Puts the layers over a video that is open.
    void addLayers();
    void showAll();
    void windowSized() { m_zoom.windowSized(); }
    /// The window was sized: what is on show may depend on that.
    void chooseParts() { m_toggles.windowSized(); }
    /// The author chose an entry of that list. False when it is none of theirs.
    bool choose(std::u16string_view list);
    /// True when the event was handled.
    bool handle(const platform::Event& event) { return m_zoom.handle(event); }

    [[nodiscard]] bool keepsGrabDistance() const { return m_toggles.isOn(Toggle::grabDistance); }
    /// Null without a video.
    [[nodiscard]] const std::shared_ptr<OutlinesLayer>& outlines() const { return m_outlines; }

private:
    void bind(ui::CommandSet& commands);
    void show();

    Links m_links;
    ZoomPresenter m_zoom;
    ViewToggles m_toggles;
    std::shared_ptr<OnionLayer> m_onion;
    std::shared_ptr<OutlinesLayer> m_outlines;
    std::shared_ptr<ZonesLayer> m_drawing;
};

} // namespace zoneedit
