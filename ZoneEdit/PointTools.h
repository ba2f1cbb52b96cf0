// The four point tools: which one is chosen, and what the mouse does with it on the picture. A
// press of the button up to its release is one step of the session; one more begins when a key
// edits something else, or chooses another zone or frame, meanwhile. Part of the zone editor.
#pragma once

#include <string_view>

#include "ZoneEdit/EditedVideo.h"
#include "platform/Event.h"
#include "platform/Geometry.h"
#include "platform/WindowParts.h"
#include "ui/Controls.h"
#include "zone/ZoneSession.h"

namespace zoneedit {

class PointTools {
public:
    /// All outlive it.
    PointTools(ui::Controls controls, EditedVideo& video, zone::ZoneSession& session);

    void showAll() { choose(Tool::movePoint); }
    ~PointTools();
    PointTools(const PointTools&) = delete;
    PointTools& operator=(const PointTools&) = delete;

    /// The author pressed the option of that name. False when it is no tool's.
    bool choose(std::u16string_view option);
    /// True when the event was handled.
    bool handle(const platform::Event& event);

private:
    enum class Tool { movePoint = 0, addPoint = 1, addMultiPoint = 2, deletePoint = 3 };
    struct Rule;
    struct Place {
        int zone = -1;
        int frame = -1;

        bool operator==(const Place&) const = default;
    };

    /// What a press at a point of the window would do.
    [[nodiscard]] platform::PointerShape pointerAt(platform::Point position) const;
    [[nodiscard]] static const Rule& ruleOf(Tool tool);
    void choose(Tool tool);
    bool press(platform::Point position);
    void use(int zone, int frame, platform::Point at);
    bool move(platform::Point position);
    bool release(platform::Point position);
    void beginStep(zone::StepLabel::Name name, Place place);
    void cancelStep();
    void endStep();

    ui::Controls m_controls;
    EditedVideo& m_video;
    zone::ZoneSession& m_session;
    Tool m_tool = Tool::movePoint;
    bool m_isHeld = false; ///< the button is down, and the mouse ours
    Place m_place;         ///< of the step in progress
};

} // namespace zoneedit
