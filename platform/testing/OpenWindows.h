// The open windows of this program, for tests and guided tours, which have to find those that the
// program opens by itself.
#pragma once

#include <vector>

#include "platform/Window.h"

namespace platform {

/// The owners of all windows that have an accessibility tree, which the popups and the closed ones
/// have not; the topmost window is the last. UI thread only.
[[nodiscard]] std::vector<WindowEvents*> openWindows();

/// Those that are a T.
template <class T>
[[nodiscard]] std::vector<T*> openWindowsOf() {
    std::vector<T*> result;
    for (WindowEvents* events : openWindows()) {
        if (T* window = dynamic_cast<T*>(events)) {
            result.push_back(window);
        }
    }
    return result;
}

} // namespace platform
