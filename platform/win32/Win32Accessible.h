// A window's accessibility tree through MSAA: one COM object for each node that a client asks for.
// The object notices by the node's life token when the node is gone.
// https://learn.microsoft.com/windows/win32/api/oleacc/nn-oleacc-iaccessible
#pragma once

#include <windows.h>

#include "platform/Accessible.h"

namespace platform::win32 {

/// The answer to WM_GETOBJECT for the client area of `window`, whose root may be null; 0 leaves the
/// answer to the system.
[[nodiscard]] LRESULT answerAccessibility(HWND window, Accessible* root, WPARAM wide,
                                          LPARAM wideLong);

/// Presses the node of a number that AccessibleNode::numberOf gave, if it still lives.
void pressAccessible(long number);

/// Notifies listeners of a change to `node` of `window`.
void tellAccessibility(HWND window, Accessible& node, AccessibleChange change);

} // namespace platform::win32
