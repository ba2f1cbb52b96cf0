#include <algorithm>
#include <vector>

#include "platform/Window.h"
#include "platform/testing/OpenWindows.h"
#include "platform/win32/Win32Window.h"

namespace platform {

namespace {

BOOL CALLBACK noteWindow(HWND handle, LPARAM found) {
    const win32::Win32Window* window = win32::Win32Window::fromHandle(handle);
    if (window != nullptr && window->events().accessibleRoot() != nullptr) {
        reinterpret_cast<std::vector<WindowEvents*>*>(found)->push_back(&window->events());
    }
    return TRUE;
}

} // namespace

std::vector<WindowEvents*> openWindows() {
    std::vector<WindowEvents*> result;
    EnumThreadWindows(GetCurrentThreadId(), noteWindow, reinterpret_cast<LPARAM>(&result));
    std::reverse(result.begin(), result.end()); // the system begins at the top
    return result;
}

} // namespace platform
