// A mutex and its lock guard that Clang's thread-safety analysis understands. The condition
// variable is std::condition_variable_any, which waits on the mutex itself.
#pragma once

#include <condition_variable>
#include <mutex>

#include "platform/ThreadAnnotations.h"

namespace theora {

class CAPABILITY("mutex") TheoraMutex {
public:
    void lock() ACQUIRE() { m_mutex.lock(); }
    void unlock() RELEASE() { m_mutex.unlock(); }

private:
    std::mutex m_mutex;
};

/// Locks the mutex for the lifetime of the guard.
class SCOPED_CAPABILITY TheoraLock {
public:
    explicit TheoraLock(TheoraMutex& mutex) ACQUIRE(mutex) : m_mutex(mutex) { m_mutex.lock(); }
    ~TheoraLock() RELEASE() { m_mutex.unlock(); }
    TheoraLock(const TheoraLock&) = delete;
    TheoraLock& operator=(const TheoraLock&) = delete;

private:
    TheoraMutex& m_mutex;
};

using TheoraCondition = std::condition_variable_any;

} // namespace theora
