// A pipe whose ends close with it; the way out of a signal handler.
#pragma once

#include <array>

#include <fcntl.h>
#include <unistd.h>

namespace platform::qt {

class QtPipe {
public:
    QtPipe() {
        if (::pipe2(m_ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
            m_ends = {-1, -1};
        }
    }
    ~QtPipe() {
        for (const int end : m_ends) {
            if (end >= 0) {
                ::close(end);
            }
        }
    }
    QtPipe(const QtPipe&) = delete;
    QtPipe& operator=(const QtPipe&) = delete;

    /// -1 when the system had no pipe to give.
    [[nodiscard]] int readEnd() const { return m_ends[0]; }
    [[nodiscard]] int writeEnd() const { return m_ends[1]; }

private:
    std::array<int, 2> m_ends{-1, -1};
};

} // namespace platform::qt
