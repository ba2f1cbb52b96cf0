#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/Immortal.h"
#include "platform/Process.h"
#include "platform/posix/SystemPath.h"

namespace platform {
namespace {

/// Both ends of a pipe that no started program inherits.
class ReportPipe {
public:
    ReportPipe() {
        m_good = ::pipe2(m_ends.data(), O_CLOEXEC) == 0;
        for (int& end : m_ends) {
            m_good = m_good && moveAboveStandardStreams(end);
        }
    }
    ~ReportPipe() {
        closeEnd(0);
        closeEnd(1);
    }
    ReportPipe(const ReportPipe&) = delete;
    ReportPipe& operator=(const ReportPipe&) = delete;

    [[nodiscard]] bool good() const { return m_good; }
    [[nodiscard]] int readEnd() const { return m_ends[0]; }
    [[nodiscard]] int writeEnd() const { return m_ends[1]; }
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

std::vector<std::string> argumentList(const LaunchRequest& request) {
    std::vector<std::string> list{systemPath(request.program)};
    const std::string& text = request.arguments;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(' ', start), text.size());
        if (end > start) {
            list.push_back(text.substr(start, end - start));
        }
        start = end + 1;
    }
    return list;
}

// Between fork and exec only calls that are safe in a signal handler: other threads may have held
// any lock at the moment of the fork.

[[noreturn]] void becomeProgram(char* const* arguments, const char* folder, int report) {
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    const int nowhere = ::open("/dev/null", O_RDWR);
    for (int stream = 0; nowhere >= 0 && stream <= 2; ++stream) {
        ::dup2(nowhere, stream);
    }
    ::close_range(3, ~0U, CLOSE_RANGE_CLOEXEC);
    if (::chdir(folder) == 0) {
        ::execv(arguments[0], arguments);
    }
    const char failed = 1;
    while (::write(report, &failed, 1) < 0 && errno == EINTR) {
    }
    ::_exit(1);
}

/// Runs in the first child, which ends at once: so the program has no parent here to wait for it.
[[noreturn]] void startInOwnSession(char* const* arguments, const char* folder, int report) {
    ::setsid();
    const pid_t program = ::fork();
    if (program == 0) {
        becomeProgram(arguments, folder, report);
    }
    ::_exit(program < 0 ? 1 : 0);
}

class PosixProcess final : public Process {
public:
    bool launch(const LaunchRequest& request) override {
        std::vector<std::string> texts = argumentList(request);
        std::vector<char*> arguments;
        for (std::string& text : texts) {
            arguments.push_back(text.data());
        }
        arguments.push_back(nullptr);
        const std::string folder = systemFolder(request.workingFolder);
        ReportPipe pipe;
        if (request.program.empty() || !pipe.good()) {
            return false;
        }
        const pid_t child = ::fork();
        if (child < 0) {
            return false;
        }
        if (child == 0) {
            startInOwnSession(arguments.data(), folder.c_str(), pipe.writeEnd());
        }
        pipe.closeWriteEnd();
        return reaped(child) && silent(pipe.readEnd());
    }

private:
    static bool reaped(pid_t child) {
        int status = 0;
        while (::waitpid(child, &status, 0) < 0) {
            if (errno != EINTR) {
                return false;
            }
        }
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

    /// A successful exec closes the pipe without a byte.
    static bool silent(int readEnd) {
        char byte = 0;
        ssize_t count = 0;
        do {
            count = ::read(readEnd, &byte, 1);
        } while (count < 0 && errno == EINTR);
        return count == 0;
    }
};

} // namespace

Process& nativeProcess() {
    static Immortal<PosixProcess> process;
    return process.value;
}

} // namespace platform
