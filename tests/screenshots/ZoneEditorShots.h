// Pictures of the zone editor, with the demo scene's clip whose first zone moves.
#pragma once

#include <memory>
#include <string>

#include "ZoneEdit/ZoneEdit.h"
#include "tests/screenshots/Photographer.h"

namespace screenshots {

/// The editor, opened at a frame in which the first zone is large. Its zones are the current ones
/// while it lives.
class OpenZoneEditor {
public:
    explicit OpenZoneEditor(Photographer& photographer);
    ~OpenZoneEditor();
    OpenZoneEditor(const OpenZoneEditor&) = delete;
    OpenZoneEditor& operator=(const OpenZoneEditor&) = delete;

    [[nodiscard]] zoneedit::ZoneEdit& window() const { return *m_window; }

private:
    std::shared_ptr<zoneedit::ZoneEdit> m_window;
};

/// With one of the zone's points chosen.
void takeZoneEditor(Photographer& photographer, const std::string& name);
/// A new zone around what the first one marks, after it was followed.
void takeFollowedZone(Photographer& photographer);
/// With a range and all that can be shown.
void takeWideZoneEditor(Photographer& photographer);

} // namespace screenshots
