// The parts of the zone editor that deal with zones as a whole: which there are, which one is
// edited, their names and switches. Makes them, binds their commands and hands events on to them.
// UI thread only.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "ZoneEdit/EditedVideo.h"
#include "ZoneEdit/FlagsPresenter.h"
#include "ZoneEdit/ZonesPanel.h"
#include "ZoneEdit/ZonesPresenter.h"
#include "platform/Event.h"
#include "platform/Geometry.h"
#include "ui/Controls.h"
#include "zone/ZoneSession.h"

namespace toolkit {
class CControlUI;
}
namespace ui {
class CommandSet;
}

namespace zoneedit {

class NoticePresenter;
class OutlinesLayer;

class ZoneParts {
public:
    /// What they work with. All outlive them.
    struct Links {
        ui::Controls controls;
        EditedVideo& video;
        zone::ZoneSession& session;
        NoticePresenter& notice;
        std::shared_ptr<OutlinesLayer> outlines; ///< null without a video
        std::function<void()> zoneShown;         ///< called when the author has chosen a zone
    };
    ZoneParts(ui::CommandSet& commands, Links links);

    void showAll();
    /// Another frame is on show.
    void frameShown();
    /// The author chose an entry of that list. False when it is none of theirs.
    bool choose(std::u16string_view list);
    /// The author pressed a switch. False when it is none of theirs.
    bool press(toolkit::CControlUI& sender);
    /// The author wants to edit an entry of that list.
    void activate(std::u16string_view list);
    /// The author left a text field. False when it is none of theirs.
    bool typed(std::u16string_view field);
    /// For Esc. False when there was nothing to do.
    bool restoreText();
    /// Chooses the zone whose name was pressed over the picture. True when the event was handled.
    bool handle(const platform::Event& event);
    /// Whether a click at that point of the window chooses a zone by its name.
    [[nodiscard]] bool isTagAt(platform::Point at) const { return tagAt(at) >= 0; }
    /// Chooses the next zone, but the edited one, that has that point of the window inside. False:
    /// there is none.
    bool chooseInside(platform::Point at);
    /// The edited one, and offers to take that back.
    void remove();

    [[nodiscard]] ZonesPresenter& list() { return m_zones; }

private:
    /// The zone whose name is there; -1 for none.
    [[nodiscard]] int tagAt(platform::Point at) const;
    void bind(ui::CommandSet& commands);
    void chooseBeside(int by);
    void startRename();

    Links m_links;
    FlagsPresenter m_flags;
    ZonesPresenter m_zones;
    ZonesPanel m_panel;
    bool m_isTagPressed = false; ///< by the last press of the left button
};

} // namespace zoneedit
