// Pictures of the windows before a scene is on, and of those that need none.
#pragma once

#include <string>

#include "tests/screenshots/Photographer.h"

namespace screenshots {

/// Opening a scene, a new one, the settings and the keys. `newScene`: the name typed for the new
/// one; empty: none.
void takeStart(Photographer& photographer, const std::u16string& newScene);
/// Without scenes; with a new scene, which stays on.
void takeEmptyStates(Photographer& photographer);

} // namespace screenshots
