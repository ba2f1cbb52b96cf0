// The picture of the pointer: the system's, or one that is drawn for a window's scale.
#pragma once

#include <windows.h>

#include "platform/WindowParts.h"
#include "platform/win32/Handles.h"

namespace platform::win32 {

/// UI thread only.
class Win32Pointer {
public:
    /// Valid until a drawn one of another shape or scale is asked for.
    [[nodiscard]] HCURSOR cursor(PointerShape shape, double scale);

private:
    UniqueCursor m_drawn;
    PointerShape m_shape = PointerShape::arrow; ///< of the drawn one
    double m_scale = 0;
};

} // namespace platform::win32
