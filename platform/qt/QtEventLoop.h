// Nested message loops on QEventLoop.
#pragma once

#include <QObject>
#include <functional>
#include <optional>
#include <vector>

#include "platform/EventLoop.h"
#include "platform/TaskQueue.h"

class QEventLoop;

namespace platform::qt {

/// UI thread only, except post.
class QtEventLoop final : public EventLoop {
public:
    QtEventLoop();

    int run() override;
    void postQuit(int code) override;
    void processEvents(bool wait) override;
    void post(std::function<void()> task) override;

    /// Ends every running loop and each later one at once.
    void endAll();
    [[nodiscard]] bool isEnding() const { return m_ending; }

private:
    struct Running {
        unsigned id;
        QEventLoop* loop;
    };

    QObject m_receiver; ///< queued calls end with it
    TaskQueue m_tasks;
    std::vector<Running> m_running;
    unsigned m_lastId = 0;
    std::optional<int> m_pendingQuit; ///< asked for while no loop was running
    bool m_ending = false;
};

} // namespace platform::qt
