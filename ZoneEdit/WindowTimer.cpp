#include "ZoneEdit/WindowTimer.h"

#include "platform/Window.h"
#include "platform/WindowParts.h"
#include "toolkit/window/CPaintManagerUI.h"

namespace zoneedit {

void WindowTimer::start(int milliseconds) {
    if (platform::NativeWindow* window = m_controls.manager().GetWindow()) {
        window->timers().start(m_number, milliseconds);
    }
}

void WindowTimer::stop() {
    if (platform::NativeWindow* window = m_controls.manager().GetWindow()) {
        window->timers().stop(m_number);
    }
}

bool WindowTimer::isUp(unsigned number) {
    if (number != m_number) {
        return false;
    }
    stop();
    return true;
}

} // namespace zoneedit
