#include "toolkit/window/CWindowWnd.h"

#include <exception>

#include "core/Log.h"
#include "platform/Event.h"
#include "platform/EventLoop.h"

namespace toolkit {

CWindowWnd::~CWindowWnd() {
    destroyNative();
}

bool CWindowWnd::createNative(const platform::WindowOptions& options) {
    m_native = m_gui.windows().createWindow(options, *this);
    m_alive = m_native != nullptr;
    m_closing = m_silent = false;
    if (!m_alive) {
        core::Log::get()->Error("Unable to create window");
    }
    return m_alive;
}

void CWindowWnd::destroyNative() {
    m_silent = true;
    m_alive = false;
    m_native.reset();
}

bool CWindowWnd::HandleMessage(const platform::Event& /*event*/) {
    return false;
}

void CWindowWnd::CenterWindow() {
    if (m_alive) {
        m_native->center();
    }
}

void CWindowWnd::ShowWindow(bool show) {
    if (m_alive) {
        m_native->show(show);
    }
}

int CWindowWnd::ShowModal() {
    if (!m_alive) {
        return 0;
    }
    ShowWindow(true);
    m_native->activate();
    return m_gui.loop().run();
}

void CWindowWnd::Close(int /*code*/) {
    if (m_alive && !m_closing) {
        m_closing = true;
        m_native->close();
    }
}

/// No exception may reach the event code of the system.
bool CWindowWnd::onEvent(const platform::Event& event) {
    if (m_silent) {
        return false;
    }
    const bool isLast = event.kind == platform::EventKind::destroyed;
    bool handled = false;
    try {
        handled = HandleMessage(event);
    } catch (const std::exception& exception) {
        core::Log::get()->Error("Unexpected error in a window: %s", exception.what());
    }
    if (isLast) {
        m_alive = false;
        OnFinalMessage();
    }
    return handled;
}

void CWindowWnd::onPaint(platform::Canvas& canvas, const platform::Rect& dirty) {
    try {
        if (!m_silent) {
            paint(canvas, dirty);
        }
    } catch (const std::exception& exception) {
        core::Log::get()->Error("Unexpected error in a window: %s", exception.what());
    }
}

} // namespace toolkit
