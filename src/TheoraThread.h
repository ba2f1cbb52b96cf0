// One thread with a running flag. The creator sets the flag before the thread starts, so that the
// thread cannot overwrite an immediate stop.
#pragma once

#include <atomic>
#include <thread>

namespace theora {

/// start, stop and join belong to the thread that owns the object. A derived class must stop and
/// join in its own destructor: execute() no longer exists in the base destructor.
class TheoraThread {
public:
    TheoraThread() = default;
    virtual ~TheoraThread();
    TheoraThread(const TheoraThread&) = delete;
    TheoraThread& operator=(const TheoraThread&) = delete;

    /// Waits for an earlier run to end, then starts another. Throws, with nothing running, when
    /// there is no memory or no further thread.
    void start();
    /// Only a request: execute() returns when it next checks isRunning().
    void stop() { m_running.store(false); }
    /// Waits until execute() has returned; returns at once when it never started.
    void join();
    [[nodiscard]] bool isRunning() const { return m_running.load(); }

protected:
    /// The thread's work. Must not throw.
    virtual void execute() = 0;

private:
    std::atomic<bool> m_running{false};
    std::thread m_thread;
};

} // namespace theora
