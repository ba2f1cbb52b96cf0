// The open windows of this program, so that tests and guided tours can find those that the program
// itself opens.
#pragma once

#include <vector>

#include "platform/Window.h"

namespace platform {

/// The owners of all windows that have an accessibility tree: neither popups nor closed windows
/// have one. The topmost window is the last. UI thread only.
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
