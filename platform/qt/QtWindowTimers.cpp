#include "platform/qt/QtWindowTimers.h"

#include "platform/Event.h"
#include "platform/qt/QtSurface.h"
#include "platform/qt/QtWindow.h"

namespace platform::qt {

bool QtWindowTimers::start(unsigned id, int intervalMs) {
    if (m_window.isClosing() || intervalMs < 0) {
        return false;
    }
    stop(id);
    const int timer = m_window.surface().startTimer(intervalMs, Qt::PreciseTimer);
    if (timer == 0) {
        return false;
    }
    m_timers[id] = timer;
    return true;
}

bool QtWindowTimers::stop(unsigned id) {
    const auto timer = m_timers.find(id);
    if (timer == m_timers.end()) {
        return false;
    }
    m_window.surface().killTimer(timer->second);
    m_timers.erase(timer);
    return true;
}

void QtWindowTimers::stopAll() {
    for (const auto& [id, timer] : m_timers) {
        m_window.surface().killTimer(timer);
    }
    m_timers.clear();
}

bool QtWindowTimers::handle(int timerId) {
    for (const auto& [id, timer] : m_timers) {
        if (timer == timerId) {
            Event event;
            event.kind = EventKind::timer;
            event.timerId = id;
            m_window.send(event);
            return true;
        }
    }
    return false;
}

} // namespace platform::qt
