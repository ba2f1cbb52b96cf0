// Input of a window: mouse (Win32Mouse.cpp), keyboard and input method (Win32Keys.cpp).
#pragma once

#include <optional>
#include <string>

#include <windows.h>

#include "platform/Geometry.h"
#include "platform/WindowParts.h"
#include "platform/win32/Win32Pointer.h"

namespace platform::win32 {

class Win32Window;

class Win32WindowInput final : public WindowInput {
public:
    /// `window` is not owned and outlives its parts.
    explicit Win32WindowInput(Win32Window& window) : m_window(window) {}

    void setCapture() override;
    void releaseCapture() override;
    void setPointer(PointerShape shape) override;
    void beginMove() override;
    void setTextInput(bool enabled, const Rect& caret) override;

    /// Empty: the system handles the message as well. May destroy the window.
    std::optional<LRESULT> handle(UINT message, WPARAM wide, LPARAM wideLong);
    /// The system took the capture, or the window can no longer have it.
    void loseCapture();
    /// What an input method reports: text that is not committed yet, and text that is.
    void compose(const std::u16string& preedit, const std::u16string& committed);

private:
    std::optional<LRESULT> handlePointer(UINT message, WPARAM wide, LPARAM wideLong);
    std::optional<LRESULT> handleKeyboard(UINT message, WPARAM wide, LPARAM wideLong);
    void handleMouse(UINT message, LPARAM wideLong);
    bool followMove(UINT message, LPARAM wideLong);
    void handleWheel(WPARAM wide, LPARAM wideLong);
    void handleLeave();
    bool handleSetCursor(LPARAM details);
    bool handleKey(UINT message, WPARAM virtualKey, LPARAM details);
    void handleCharacter(wchar_t unit);
    void handleComposition(LPARAM flags);

    Win32Window& m_window;
    PointerShape m_pointer = PointerShape::arrow;
    Win32Pointer m_picture; ///< of it
    bool m_captured = false;
    std::optional<Point> m_moveGrip; ///< pointer within the window while we move it ourselves
    bool m_tracksLeave = false;
    char16_t m_highSurrogate = u'\0';
    bool m_preedit = false;
};

} // namespace platform::win32
