// The accessibility tree in the terms of MSAA.
// https://learn.microsoft.com/windows/win32/winauto/object-roles
// https://learn.microsoft.com/windows/win32/winauto/object-state-constants
#pragma once

#include <string>

#include "platform/Accessible.h"

namespace platform::win32 {

/// ROLE_SYSTEM_...
[[nodiscard]] long msaaRole(AccessibleRole role);
/// STATE_SYSTEM_... of all that holds.
[[nodiscard]] long msaaState(const AccessibleState& state);
/// What a press does, in the words that the system's own controls use; empty when it does nothing.
[[nodiscard]] std::u16string msaaAction(const Accessible& node);

} // namespace platform::win32
