// Questions to an accessibility tree that both window back ends have.
#pragma once

#include "platform/Accessible.h"

namespace platform {

/// Whether accessiblePress() does something on a node of this role.
[[nodiscard]] bool isPressable(AccessibleRole role);

/// The focused node at or below `node`, or null. Not owned. UI thread only.
[[nodiscard]] Accessible* focusedIn(Accessible& node);

} // namespace platform
