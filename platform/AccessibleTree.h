// Questions to an accessibility tree that both window back ends have.
#pragma once

#include "platform/Accessible.h"

namespace platform {

/// Whether accessiblePress() does something on a node of this role.
[[nodiscard]] bool isPressable(AccessibleRole role);

} // namespace platform
