// Keys that edit the chosen point: Ctrl with an arrow moves it, Delete removes its number on every
// frame. All moves of a key that is held down are one step. Part of the zone editor. UI thread
// only.
#pragma once

#include <optional>

#include "ZoneEdit/EditedVideo.h"
#include "ZoneEdit/ShapeEditor.h"
#include "platform/Event.h"
#include "platform/Geometry.h"
#include "zone/ZoneSession.h"

namespace zoneedit {

class PointKeys {
public:
    /// All outlive it.
    PointKeys(EditedVideo& video, zone::ZoneSession& session, ShapeEditor& editor)
        : m_video(video), m_session(session), m_editor(editor) {}

    /// Whether a handle is chosen: a point, or the centre.
    [[nodiscard]] bool canNudge() const { return m_editor.handlePlace().has_value(); }
    void nudge(platform::Point by);
    [[nodiscard]] bool canRemove() const;
    /// Afterwards no point is chosen.
    void remove();
    /// Ends the step when the key is released, or the window left.
    void note(const platform::Event& event);

private:
    void begin();

    EditedVideo& m_video;
    zone::ZoneSession& m_session;
    ShapeEditor& m_editor;
    std::optional<ShapeEditor::Start> m_start; ///< while a key is held
    platform::Point m_by;                      ///< since then
};

} // namespace zoneedit
