// How many native objects this process holds. GetGuiResources knows it on Windows, but is empty
// under Wine; so the room that is left is measured: each system has a most.
#pragma once

#include <vector>

#include <windows.h>

#include "platform/win32/Handles.h"

namespace test {

/// How many GDI objects can still be made. It falls by one for each that is left behind.
inline int gdiRoom() {
    using Brush = platform::win32::Unique<platform::win32::ObjectTraits<HBRUSH>>;
    constexpr int kMost = 1 << 17;
    std::vector<Brush> brushes;
    for (int i = 0; i < kMost; ++i) {
        Brush brush(CreateSolidBrush(RGB(1, 2, 3)));
        if (!brush) {
            break;
        }
        brushes.push_back(std::move(brush));
    }
    return static_cast<int>(brushes.size());
}

/// The windows of this thread, hidden ones and those for messages alone included.
inline int windowCount() {
    int count = 0;
    const auto note = [](HWND, LPARAM found) -> BOOL {
        ++*reinterpret_cast<int*>(found);
        return TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), note, reinterpret_cast<LPARAM>(&count));
    for (HWND window = FindWindowExW(HWND_MESSAGE, nullptr, nullptr, nullptr); window != nullptr;
         window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)) {
        count += GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId() ? 1 : 0;
    }
    return count;
}

/// What a visit of a window must not change.
struct HandleCount {
    int gdiRoom = test::gdiRoom();
    int windows = windowCount();
    DWORD gdi = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    DWORD user = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);

    /// Whether now no more is held than `before`.
    [[nodiscard]] bool isNoMoreThan(const HandleCount& before) const {
        return gdiRoom >= before.gdiRoom && windows <= before.windows && gdi <= before.gdi &&
               user <= before.user;
    }
};

} // namespace test
