// The parts of the zone editor that edit shapes: tools and gestures, keys, hints. Makes them, binds
// their commands and hands events on to them. UI thread only.
#pragma once

#include <string_view>

#include "ZoneEdit/EditedVideo.h"
#include "ZoneEdit/HintPresenter.h"
#include "ZoneEdit/PointKeys.h"
#include "ZoneEdit/PointTools.h"
#include "ZoneEdit/ShapeEditor.h"
#include "platform/Event.h"
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

class NoticePresenter;

class EditingParts {
public:
    /// What they work with. All outlive them.
    struct Links {
        ui::Controls controls;
        EditedVideo& video;
        zone::ZoneSession& session;
        zone::SessionKeys& keys;
        NoticePresenter& notice;
        core::EditorSettings* settings; ///< may be null
    };
    EditingParts(ui::CommandSet& commands, const Links& links);

    void showAll() { m_tools.showAll(); }
    /// The author pressed the option of that name. False when it is none of theirs.
    bool choose(std::u16string_view option) { return m_tools.choose(option); }
    /// True when the event was handled.
    bool handle(const platform::Event& event);
    // For Esc. False when there was nothing to do.
    bool cancelDrag() { return m_tools.cancelDrag(); }
    bool endAdding();

    [[nodiscard]] HintPresenter& hints() { return m_hints; }
    [[nodiscard]] PointTools& tools() { return m_tools; }

private:
    void bindPoints(ui::CommandSet& commands);

    ShapeEditor m_editor;
    HintPresenter m_hints;
    PointTools m_tools;
    PointKeys m_pointKeys;
};

} // namespace zoneedit
