// Nested message loops. Tasks and quits go through a queue of ours, for which a message to a
// message-only window wakes the loop. The system's own quit message, which we never send, ends all
// loops.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "platform/EventLoop.h"
#include "platform/TaskQueue.h"
#include "platform/win32/Handles.h"

namespace platform::win32 {

/// UI thread only, except post.
class Win32EventLoop final : public EventLoop {
public:
    Win32EventLoop();
    ~Win32EventLoop() override;
    Win32EventLoop(const Win32EventLoop&) = delete;
    Win32EventLoop& operator=(const Win32EventLoop&) = delete;

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
        std::optional<int> code; ///< set: the loop ends
    };

    static LRESULT CALLBACK receive(HWND window, UINT message, WPARAM wide, LPARAM wideLong);
    void handle(const MSG& message);

    UniqueWindow m_window;
    TaskQueue m_tasks;
    std::vector<Running> m_running;
    unsigned m_lastId = 0;
    std::optional<int> m_pendingQuit; ///< asked for while no loop was running
    bool m_ending = false;
};

} // namespace platform::win32
