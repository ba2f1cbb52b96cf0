// Pictures of the windows in other sizes and at 200 %.
#pragma once

#include "tests/screenshots/Photographer.h"

namespace screenshots {

/// "BranchList@1366x728": in a window of that size; "BranchList@200": at 200 %.
void takeSizes(Photographer& photographer);

} // namespace screenshots
