// The timers of a window, on the system's.
#pragma once

#include <set>

#include <windows.h>

#include "platform/WindowParts.h"

namespace platform::win32 {

class Win32Window;

class Win32WindowTimers final : public WindowTimers {
public:
    /// `window` is not owned and outlives its parts.
    explicit Win32WindowTimers(Win32Window& window) : m_window(window) {}

    bool start(unsigned id, int intervalMs) override;
    bool stop(unsigned id) override;
    void stopAll();
    /// The native window is gone with all its timers.
    void forgetAll() { m_running.clear(); }
    /// A timer of the system has fired. May destroy the window.
    void handle(WPARAM nativeId);

private:
    Win32Window& m_window;
    std::set<unsigned> m_running;
};

} // namespace platform::win32
