// The fields of the panel for the chosen point and the whole shape: what a drag does, by numbers.
// Part of the zone editor. UI thread only.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "ZoneEdit/ShapeEditor.h"
#include "edit/Observers.h"
#include "ui/Controls.h"
#include "zone/ZoneSession.h"

namespace zoneedit {

class PointFields {
public:
    /// All outlive it.
    PointFields(ui::Controls controls, zone::ZoneSession& session, ShapeEditor& editor);

    /// For another frame, zone or chosen point.
    void show();
    /// The author left the field of that name. False when it is none of these.
    bool typed(std::u16string_view field);
    /// Gives the field with the focus its number back. False when it has it.
    bool restoreText();

private:
    [[nodiscard]] std::u16string textOf(std::u16string_view field) const;
    /// Whether the author has changed what the field showed.
    [[nodiscard]] bool isTyped(std::u16string_view field) const;
    void showNumber(std::u16string_view field);
    void movePoint(std::u16string_view field, int value);

    ui::Controls m_controls;
    zone::ZoneSession& m_session;
    ShapeEditor& m_editor;
    edit::Subscription m_changes;
    std::map<std::u16string_view, std::u16string> m_shown; ///< by field
};

} // namespace zoneedit
