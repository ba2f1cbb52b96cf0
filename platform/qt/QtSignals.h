// SIGTERM and SIGINT as calls on the UI thread.
#pragma once

#include <QSocketNotifier>
#include <csignal>
#include <functional>

#include "platform/qt/QtPipe.h"

namespace platform::qt {

/// One object at a time. A second signal ends the program in the system's own way, so that one
/// whose UI thread is stuck can still be ended. The destructor restores the former handlers.
class QtSignals {
public:
    /// `onSignal` is called on the UI thread from its event loop.
    explicit QtSignals(std::function<void()> onSignal);
    ~QtSignals();
    QtSignals(const QtSignals&) = delete;
    QtSignals& operator=(const QtSignals&) = delete;

private:
    QtPipe m_pipe;
    QSocketNotifier m_notifier;
    std::function<void()> m_onSignal;
    struct sigaction m_formerTerminate {};
    struct sigaction m_formerInterrupt {};
};

} // namespace platform::qt
