// The parts of the zone editor that edit shapes: tools and gestures, keys, hints. Makes them, binds
// their commands and hands events on to them. UI thread only.
#pragma once

#include <span>
#include <string_view>

#include "ZoneEdit/EditedVideo.h"
#include "ZoneEdit/FrameSelection.h"
#include "ZoneEdit/HintPresenter.h"
#include "ZoneEdit/PointFields.h"
#include "ZoneEdit/PointKeys.h"
#include "ZoneEdit/PointTools.h"
#include "ZoneEdit/RangeActions.h"
#include "ZoneEdit/RangeBar.h"
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
class ZonesPresenter;

class EditingParts {
public:
    /// What they work with. All outlive them.
    struct Links {
        ui::Controls controls;
        EditedVideo& video;
        zone::ZoneSession& session;
        zone::SessionKeys& keys;
        FrameSelection& selection;
        NoticePresenter& notice;
        ZonesPresenter& zones;
        core::EditorSettings* settings; ///< may be null
    };
    EditingParts(ui::CommandSet& commands, const Links& links);

    void showAll();
    /// Another frame or zone is on show.
    void shown() { m_fields.show(); }
    /// The window was sized, or another bar is in the place of theirs.
    void barsChanged() { m_rangeBar.show(); }
    /// The author pressed the option of that name. False when it is none of theirs.
    bool choose(std::u16string_view option) { return m_tools.choose(option); }
    /// True when the event was handled.
    bool handle(const platform::Event& event);
    /// The author left a text field. False when it is none of theirs.
    bool typed(std::u16string_view field) { return m_fields.typed(field); }
    // For Esc. False when there was nothing to do.
    bool restoreText() { return m_fields.restoreText(); }
    bool cancelDrag() { return m_tools.cancelDrag(); }
    bool endAdding();

    [[nodiscard]] HintPresenter& hints() { return m_hints; }
    [[nodiscard]] PointTools& tools() { return m_tools; }
    [[nodiscard]] const ShapeEditor& editor() const { return m_editor; }

private:
    void bindPoints(ui::CommandSet& commands);
    void bindRange(ui::CommandSet& commands);
    void bindShapes(ui::CommandSet& commands);
    void turnFill();
    void showFill();
    void openMenu(ui::CommandSet& commands, std::u16string_view button,
                  std::span<const std::string_view> rows);

    Links m_links;
    ShapeEditor m_editor;
    HintPresenter m_hints;
    PointTools m_tools;
    PointKeys m_pointKeys;
    PointFields m_fields;
    RangeActions m_range;
    RangeBar m_rangeBar;
};

} // namespace zoneedit
