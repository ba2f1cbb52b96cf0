#include "platform/win32/Win32WindowTimers.h"

#include "platform/Event.h"
#include "platform/win32/Win32Window.h"

namespace platform::win32 {

namespace {

/// The system has no timer 0.
constexpr UINT_PTR kFirstTimer = 1;

} // namespace

bool Win32WindowTimers::start(unsigned id, int intervalMs) {
    if (m_window.isClosing() || intervalMs < 0 ||
        SetTimer(m_window.handle(), id + kFirstTimer, static_cast<UINT>(intervalMs), nullptr) ==
            0) {
        return false;
    }
    m_running.insert(id);
    return true;
}

bool Win32WindowTimers::stop(unsigned id) {
    if (m_running.erase(id) == 0) {
        return false;
    }
    KillTimer(m_window.handle(), id + kFirstTimer);
    return true;
}

void Win32WindowTimers::stopAll() {
    for (const unsigned id : m_running) {
        KillTimer(m_window.handle(), id + kFirstTimer);
    }
    m_running.clear();
}

void Win32WindowTimers::handle(WPARAM nativeId) {
    const auto id = static_cast<unsigned>(nativeId - kFirstTimer);
    if (m_running.count(id) == 0) {
        return; // stopped while its message was waiting
    }
    Event event;
    event.kind = EventKind::timer;
    event.timerId = id;
    m_window.send(event);
}

} // namespace platform::win32
