// Pipes to started programs, and how a start that failed is reported through one. Used by the POSIX
// back end's sources only.
#pragma once

#include <array>
#include <cerrno>
#include <cstddef>

#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

namespace platform {

/// Both ends of a pipe that no started program inherits.
class Pipe {
public:
    Pipe() {
        m_good = ::pipe2(m_ends.data(), O_CLOEXEC) == 0;
        for (int& end : m_ends) {
            m_good = m_good && moveAboveStandardStreams(end);
        }
    }
    ~Pipe() {
        closeEnd(0);
        closeEnd(1);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    [[nodiscard]] bool good() const { return m_good; }
    [[nodiscard]] int readEnd() const { return m_ends[0]; }
    [[nodiscard]] int writeEnd() const { return m_ends[1]; }
    void closeReadEnd() { closeEnd(0); }
    void closeWriteEnd() { closeEnd(1); }

private:
    /// The three lowest numbers are free when this program was started without standard streams,
    /// and are replaced in the started one.
    static bool moveAboveStandardStreams(int& end) {
        if (end > 2) {
            return true;
        }
        const int moved = ::fcntl(end, F_DUPFD_CLOEXEC, 3);
        ::close(end);
        end = moved;
        return moved >= 0;
    }

    void closeEnd(std::size_t end) {
        if (m_ends[end] >= 0) {
            ::close(m_ends[end]);
        }
        m_ends[end] = -1;
    }

    std::array<int, 2> m_ends{-1, -1};
    bool m_good = false;
};

/// In a child that could not become the program: tells its parent why. Safe after a fork.
inline void reportStartError(int writeEnd) {
    const int error = errno;
    while (::write(writeEnd, &error, sizeof error) < 0 && errno == EINTR) {
    }
}

/// What the child has reported; 0 once it has become the program, which closes the pipe.
[[nodiscard]] inline int startError(int readEnd) {
    int error = 0;
    ssize_t count = 0;
    do {
        count = ::read(readEnd, &error, sizeof error);
    } while (count < 0 && errno == EINTR);
    return count == 0 ? 0 : (error != 0 ? error : EIO);
}

} // namespace platform
