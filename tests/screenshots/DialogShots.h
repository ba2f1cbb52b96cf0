// Pictures of the windows that the branch editor opens in front of itself.
#pragma once

#include "tests/screenshots/Photographer.h"
#include "ui/BranchList.h"

namespace screenshots {

/// The question "Exit?" over `asker`.
void takeQuestion(Photographer& photographer, ui::BranchList& asker);
/// Earlier versions, the import of videos and publishing, each at work; the scene is loaded anew.
void takeDialogs(Photographer& photographer);

} // namespace screenshots
