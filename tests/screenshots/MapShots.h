// Pictures of the scene map.
#pragma once

#include "tests/screenshots/Photographer.h"

namespace screenshots {

/// The demo scene grown to a dozen branches, which stays on; near and far.
void takeMap(Photographer& photographer);

} // namespace screenshots
