// Pictures of the zone editor, with the demo scene's clip whose first zone moves.
#pragma once

#include <memory>
#include <string>

#include "ZoneEdit/ZoneEdit.h"
#include "tests/screenshots/Photographer.h"
#include "tests/support/gui/WindowDriver.h"

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

// In an editor that is open, in any size.
/// One point of the zone.
void choosePoint(const test::WindowDriver& driver);
/// The other zones, the keys before and after, and the loupe; hides them when they are shown: the
/// next window begins as the last one ended.
void switchViews(const test::WindowDriver& driver);
/// That ends with the frame on show.
void chooseRange(const test::WindowDriver& driver);
/// Draws a new zone around what the first one marks, and follows that.
void followSign(Photographer& photographer, const test::WindowDriver& driver);

/// With one of the zone's points chosen.
void takeZoneEditor(Photographer& photographer, const std::string& name);
/// After following.
void takeFollowedZone(Photographer& photographer);
/// With a range and all that can be shown.
void takeWideZoneEditor(Photographer& photographer);

} // namespace screenshots
