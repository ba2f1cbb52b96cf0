// Pictures of the branch editor.
#pragma once

#include "platform/Geometry.h"
#include "tests/screenshots/Photographer.h"
#include "tests/support/gui/WindowDriver.h"

namespace screenshots {

/// The demo scene, with an open list, the menu, the keyboard's focus and the dialogs.
void takeBranchEditor(Photographer& photographer);
/// The second step of the tour, as "Tour".
void takeTourStep(Photographer& photographer);
/// All its steps in a window of this size: "Tour-1@884x672".
void takeTour(Photographer& photographer, platform::Size size);
/// Pauses the preview, with outlines, after the first choice in the middle of the first clip, which
/// is the demo scene's.
void play(Photographer& photographer, const test::WindowDriver& driver);
/// Paused, with outlines, after the first choice in the middle of the demo scene's first clip.
void takePreview(Photographer& photographer);

} // namespace screenshots
