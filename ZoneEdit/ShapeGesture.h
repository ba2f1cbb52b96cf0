// Drags with Ctrl held: a rectangle is drawn, or the shape is scaled or turned about its centre.
// They begin once the pointer has gone some pixels; until then the press counts as a click. Part of
// the zone editor. UI thread only.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "ZoneEdit/EditedVideo.h"
#include "ZoneEdit/GestureLayer.h"
#include "ZoneEdit/HintPresenter.h"
#include "ZoneEdit/ShapeEditor.h"
#include "platform/Geometry.h"
#include "ui/Controls.h"
#include "video/PictureView.h"
#include "zone/ShapeEdits.h"
#include "zone/ZoneSession.h"

namespace zoneedit {

class ShapeGesture {
public:
    enum class Kind { rectangle, scale, rotate };

    /// All outlive it. Its layer becomes one of the video's.
    ShapeGesture(ui::Controls controls, EditedVideo& video, zone::ZoneSession& session,
                 ShapeEditor& editor, HintPresenter& hints);

    /// At a point of the window.
    void begin(Kind kind, platform::Point at);
    [[nodiscard]] bool isOpen() const { return m_kind.has_value(); }
    void move(platform::Point to);
    /// False when it was a click, which has changed nothing.
    bool end();
    /// Takes back what it has done.
    void cancel();

private:
    void startDrag();
    void turnOrScale(platform::Point to);
    [[nodiscard]] zone::Points rectangleTo(platform::Point to) const;
    /// Whether the session's step is still this drag's, and what it began on is on show.
    [[nodiscard]] bool isInPlace() const;
    void addRectangle();
    void showLabel(const std::u16string& text, platform::Point at);
    void close();

    ui::Controls m_controls;
    EditedVideo& m_video;
    zone::ZoneSession& m_session;
    ShapeEditor& m_editor;
    HintPresenter& m_hints;
    std::shared_ptr<GestureLayer> m_layer = std::make_shared<GestureLayer>();
    std::optional<Kind> m_kind;
    bool m_isDragged = false;
    platform::Point m_press;
    video::PictureView m_pressView; ///< the wheel may zoom, and the middle button move, meanwhile
    platform::Point m_at;           ///< of the pointer now
    std::optional<ShapeEditor::Start> m_start;
};

} // namespace zoneedit
