// The message loop of the UI thread.
#pragma once

#include <functional>

namespace platform {

class EventLoop {
public:
    virtual ~EventLoop() = default;
    /// Handles events until postQuit; loops nest, and a quit ends the innermost one only.
    /// Returns the quit code. UI thread only.
    virtual int run() = 0;
    /// Ends the loop that is innermost now, after the events already in the queue; without a
    /// running loop, the next one ends at once. UI thread only.
    virtual void postQuit(int code) = 0;
    /// Handles what is waiting; with `wait`, sleeps for the first event, but not for long (tests).
    virtual void processEvents(bool wait) = 0;
    /// Runs `task` on the UI thread from a loop, in the order posted. Any thread.
    virtual void post(std::function<void()> task) = 0;
};

} // namespace platform
