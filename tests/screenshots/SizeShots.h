// Pictures of the windows in every size.
#pragma once

#include "tests/screenshots/Photographer.h"

namespace screenshots {

/// The two that grow, at work, at their least size and in others, the last one at 200 %:
/// "BranchList-preview@3840x2160"; the tour; each other window at 100 and 200 %: "Keys@200".
void takeSizes(Photographer& photographer);

} // namespace screenshots
