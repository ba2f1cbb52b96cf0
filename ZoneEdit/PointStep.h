// One step of the session that the mouse makes on the picture: a drag of a point or of the centre,
// a point added or deleted. Part of the zone editor. UI thread only.
#pragma once

#include <optional>

#include "ZoneEdit/ShapeEditor.h"
#include "platform/Geometry.h"
#include "zone/StepLabel.h"
#include "zone/ZoneSession.h"

namespace zoneedit {

class PointStep {
public:
    using Place = ShapeEditor::Place;

    /// Both outlive it.
    PointStep(zone::ZoneSession& session, ShapeEditor& editor)
        : m_session(session), m_editor(editor) {}

    /// `press`: of the pointer, in the picture area.
    void begin(zone::StepLabel::Name name, Place place, platform::Point press);
    /// The step moves the chosen handle, which was pressed at that point of the picture area. The
    /// handle keeps its distance from the pointer, or comes to it.
    void beginMove(Place place, platform::Point press, bool keepsDistance);
    /// The pointer is there, with this frame on show. `keepsAxis`: the handle only moves across or
    /// up and down.
    void move(Place place, platform::Point to, bool keepsAxis);
    void cancel() { m_session.cancelGesture(); }
    void end();

private:
    void open(zone::StepLabel::Name name, Place place);
    void openMove(Place place);

    zone::ZoneSession& m_session;
    ShapeEditor& m_editor;
    Place m_place;
    std::optional<ShapeEditor::Start> m_start; ///< none for a point that was added by this press
    platform::Point m_press;                   ///< where that was
    platform::Point m_grab;                    ///< from the pointer to the handle
};

} // namespace zoneedit
