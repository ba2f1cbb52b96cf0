// Holds threads up until a test opens it. In place of the standard latches and semaphores, whose
// wake-ups get lost in programs of the Windows cross compiler.
#pragma once

#include <condition_variable>
#include <mutex>

namespace support {

/// Closed at first. Any thread.
class Gate {
public:
    void open() { set(true); }
    void close() { set(false); }
    void wait() {
        std::unique_lock lock(m_mutex);
        m_opened.wait(lock, [this] { return m_isOpen; });
    }

private:
    void set(bool isOpen) {
        const std::scoped_lock lock(m_mutex);
        m_isOpen = isOpen;
        m_opened.notify_all();
    }

    std::mutex m_mutex;
    std::condition_variable m_opened;
    bool m_isOpen = false;
};

} // namespace support
