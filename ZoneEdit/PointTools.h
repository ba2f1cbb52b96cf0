// What the mouse does with the chosen point tool on the picture. A press of the button up to its
// release is one step of the session; one more begins when a key edits something else, or chooses
// another zone or frame, meanwhile. Part of the zone editor.
#pragma once

#include <functional>
#include <string_view>
#include <utility>

#include "ZoneEdit/EditedVideo.h"
#include "ZoneEdit/HintPresenter.h"
#include "ZoneEdit/PointStep.h"
#include "ZoneEdit/ShapeEditor.h"
#include "ZoneEdit/ShapeGesture.h"
#include "ZoneEdit/ToolChoice.h"
#include "core/Texts.h"
#include "platform/Event.h"
#include "platform/Geometry.h"
#include "ui/Controls.h"
#include "zone/ZoneSession.h"

namespace zoneedit {

class PointTools {
public:
    /// All outlive it.
    PointTools(ui::Controls controls, EditedVideo& video, zone::ZoneSession& session,
               ShapeEditor& editor, HintPresenter& hints);

    void showAll() { m_choice.choose(Tool::movePoint); }
    ~PointTools();
    PointTools(const PointTools&) = delete;
    PointTools& operator=(const PointTools&) = delete;

    /// The author pressed the option of that name. False when it is no tool's.
    bool choose(std::u16string_view option) { return m_choice.choose(option); }
    /// True when the event was handled.
    bool handle(const platform::Event& event);
    /// Whether a press keeps its distance from the handle that it takes.
    void setKeepsDistance(std::function<bool()> keeps) { m_keepsDistance = std::move(keeps); }
    /// What a click with Ctrl and Move at a point of the window is for, before it counts as one
    /// without. True when it was for that.
    void setControlClick(std::function<bool(platform::Point)> click) {
        m_controlClick = std::move(click);
    }
    /// Whether a press at a point of the window is for something else, which lies on the picture.
    void setCovered(std::function<bool(platform::Point)> covered) {
        m_covered = std::move(covered);
    }
    /// Takes back the drag that is going on. False when there is none.
    bool cancelDrag();
    [[nodiscard]] bool isAddingMany() const { return m_choice.tool() == Tool::addMultiPoint; }
    void endAddingMany() { m_choice.choose(Tool::movePoint); }

private:
    using Place = ShapeEditor::Place;

    void noteHeld(const platform::Event& event);
    /// What counts as held: a drag goes on as it began, whichever keys follow.
    [[nodiscard]] platform::Modifiers countedHeld() const;
    bool act(const platform::Event& event);
    /// Of the area, that shows at a point of the window: the last one of a scaled picture may lie
    /// partly beyond it, and a mouse that was pressed has perhaps left it.
    [[nodiscard]] platform::Point pixelAt(platform::Point position) const;
    bool press(const platform::Event& event);
    bool pressTool(Place place, platform::Point at);
    bool beginGesture(ShapeGesture::Kind kind, const platform::Event& event);
    /// Why it did nothing; empty where it did, or where nothing was to be expected.
    core::Text use(Place place, platform::Point at);
    bool move(platform::Point position);
    bool release(platform::Point position);
    void releaseGesture(platform::Point position);
    void cancelStep();
    void endStep();

    ui::Controls m_controls;
    EditedVideo& m_video;
    zone::ZoneSession& m_session;
    ShapeEditor& m_editor;
    HintPresenter& m_hints;
    ToolChoice m_choice;
    ShapeGesture m_gesture;
    PointStep m_step;
    std::function<bool()> m_keepsDistance;
    std::function<bool(platform::Point)> m_controlClick;
    std::function<bool(platform::Point)> m_covered;
    bool m_isHeld = false; ///< the button is down, and the mouse ours
    platform::Modifiers m_held;
    platform::Modifiers m_gestureHeld; ///< when it began
};

} // namespace zoneedit
