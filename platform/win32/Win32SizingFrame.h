// The border outside a window at which the user sizes it: a window of its own behind it, of which
// nothing is seen and which takes no place from the content. UI thread only.
#pragma once

#include <windows.h>

#include "platform/win32/Handles.h"

namespace platform::win32 {

class Win32SizingFrame {
public:
    Win32SizingFrame() = default;
    ~Win32SizingFrame();
    Win32SizingFrame(const Win32SizingFrame&) = delete;
    Win32SizingFrame& operator=(const Win32SizingFrame&) = delete;

    /// Around `sized` as it is now, `depth` pixels of the screen deep; gone while that can't be
    /// sized.
    void follow(HWND sized, int depth);
    /// Null before the first follow.
    [[nodiscard]] HWND handle() const { return m_handle.get(); }

private:
    static LRESULT CALLBACK receive(HWND handle, UINT message, WPARAM wide, LPARAM wideLong);

    bool create();
    void surround(const RECT& place, int depth);
    /// The part of a frame that a point of the screen lies in.
    [[nodiscard]] LRESULT codeAt(POINT at) const;
    void press(POINT at) const;

    UniqueWindow m_handle;
    HWND m_sized = nullptr; ///< not owned
    SIZE m_size{};
    int m_depth = 0;
};

} // namespace platform::win32
