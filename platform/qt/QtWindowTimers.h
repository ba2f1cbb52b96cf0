// The timers of a window, on Qt's.
#pragma once

#include <map>

#include "platform/WindowParts.h"

namespace platform::qt {

class QtWindow;

class QtWindowTimers final : public WindowTimers {
public:
    /// `window` is not owned and outlives its parts.
    explicit QtWindowTimers(QtWindow& window) : m_window(window) {}

    bool start(unsigned id, int intervalMs) override;
    bool stop(unsigned id) override;
    void stopAll();
    /// A Qt timer has fired. False when it is not one of ours. May destroy the window.
    bool handle(int timerId);

private:
    QtWindow& m_window;
    std::map<unsigned, int> m_timers; ///< our id to Qt's
};

} // namespace platform::qt
