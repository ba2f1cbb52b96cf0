// The four point tools: which one is chosen, and what a press of the mouse would do with it. Part
// of the zone editor. UI thread only.
#pragma once

#include <optional>
#include <string_view>

#include "ZoneEdit/EditedVideo.h"
#include "ZoneEdit/HintPresenter.h"
#include "ZoneEdit/ShapeGesture.h"
#include "platform/Event.h"
#include "platform/Geometry.h"
#include "platform/WindowParts.h"
#include "ui/Controls.h"
#include "zone/StepLabel.h"
#include "zone/ZoneSession.h"

namespace zoneedit {

enum class Tool { movePoint = 0, addPoint = 1, addMultiPoint = 2, deletePoint = 3 };

struct ToolRule {
    zone::StepLabel::Name step;
    bool holds; ///< the mouse stays ours until the button is released
    Tool next;  ///< after the press
};

class ToolChoice {
public:
    /// All outlive it.
    ToolChoice(ui::Controls controls, const EditedVideo& video, const zone::ZoneSession& session,
               HintPresenter& hints)
        : m_controls(controls), m_video(video), m_session(session), m_hints(hints) {}

    [[nodiscard]] Tool tool() const { return m_tool; }
    [[nodiscard]] const ToolRule& rule() const;
    /// The author pressed the option of that name. False when it is no tool's.
    bool choose(std::u16string_view option);
    void choose(Tool tool);

    /// What a drag draws while these are held, if anything.
    [[nodiscard]] std::optional<ShapeGesture::Kind> gestureOf(platform::Modifiers held) const;
    /// Tells what a press at a point of the window would do.
    [[nodiscard]] platform::PointerShape pointerAt(platform::Point position,
                                                   platform::Modifiers held) const;

private:
    ui::Controls m_controls;
    const EditedVideo& m_video;
    const zone::ZoneSession& m_session;
    HintPresenter& m_hints;
    Tool m_tool = Tool::movePoint;
};

} // namespace zoneedit
