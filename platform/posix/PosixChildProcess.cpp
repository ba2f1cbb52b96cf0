#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/ChildProcess.h"
#include "platform/posix/Pipe.h"
#include "platform/posix/SystemPath.h"

namespace platform {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr int kNiceness = 5;
/// How soon the end of a program is seen whose pipes another one keeps open.
constexpr milliseconds kSlice{20};
constexpr int kGroupRounds = 100;

/// What the new process needs between fork and exec, where no memory may be allocated: other
/// threads may have held any lock at the moment of the fork.
struct Start {
    std::vector<char*> arguments;
    const char* folder = nullptr; ///< null for this program's own
    std::uint64_t memoryBytes = 0;
    bool isBackground = false;
    int out = -1;
    int error = -1;
    int report = -1;
    pid_t parent = 0;
};

void limit(int resource, std::uint64_t most) {
    rlimit limits{};
    if (::getrlimit(static_cast<__rlimit_resource>(resource), &limits) == 0) {
        limits.rlim_cur = std::min<rlim_t>(most, limits.rlim_max);
        limits.rlim_max = limits.rlim_cur;
        (void)::setrlimit(static_cast<__rlimit_resource>(resource), &limits);
    }
}

void resetSignals() {
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    for (const int ignored : {SIGPIPE, SIGHUP, SIGINT, SIGQUIT, SIGTERM}) {
        (void)::signal(ignored, SIG_DFL);
    }
}

[[noreturn]] void becomeProgram(const Start& start) {
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != start.parent) {
        ::_exit(1); // it has ended before the line above
    }
    resetSignals();
    limit(RLIMIT_CORE, 0);
    if (start.memoryBytes > 0) {
        limit(RLIMIT_DATA, start.memoryBytes);
    }
    if (start.isBackground) {
        (void)::setpriority(PRIO_PROCESS, 0, kNiceness);
    }
    const int nowhere = ::open("/dev/null", O_RDONLY);
    const bool good = nowhere >= 0 && ::dup2(nowhere, 0) == 0 && ::dup2(start.out, 1) == 1 &&
                      ::dup2(start.error, 2) == 2;
    ::close_range(3, ~0U, CLOSE_RANGE_CLOEXEC);
    if (good && (start.folder == nullptr || ::chdir(start.folder) == 0)) {
        ::execv(start.arguments.front(), start.arguments.data());
    }
    reportStartError(start.report);
    ::_exit(1);
}

class PosixChildProcess final : public ChildProcess {
public:
    PosixChildProcess() = default;
    ~PosixChildProcess() override { endGroup(); }
    PosixChildProcess(const PosixChildProcess&) = delete;
    PosixChildProcess& operator=(const PosixChildProcess&) = delete;

    /// 0, or the system's code.
    int start(const ChildRequest& request);
    bool read(milliseconds wait, ChildOutput& output) override;
    void end() override;
    [[nodiscard]] int exitCode() const override { return m_exitCode; }

private:
    /// True if there was something to read.
    bool readBoth(milliseconds wait, ChildOutput& output);
    /// True if there was something to read. Closes the pipe at its end.
    static bool readSome(Pipe& pipe, std::string& text);
    [[nodiscard]] bool hasEnded() const;
    void endGroup();

    Pipe m_out;
    Pipe m_error;
    pid_t m_child = 0; ///< 0 once it is gone
    int m_exitCode = kKilled;
};

int PosixChildProcess::start(const ChildRequest& request) {
    Pipe report;
    if (!report.good() || !m_out.good() || !m_error.good()) {
        return errno != 0 ? errno : EMFILE;
    }
    std::vector<std::string> texts{systemPath(request.program)};
    texts.insert(texts.end(), request.arguments.begin(), request.arguments.end());
    const std::string folder = systemPath(request.workingFolder);
    Start start;
    for (std::string& text : texts) {
        if (text.find('\0') != std::string::npos) {
            return EINVAL;
        }
        start.arguments.push_back(text.data());
    }
    start.arguments.push_back(nullptr);
    start.folder = folder.empty() ? nullptr : folder.c_str();
    start.memoryBytes = request.memoryBytes;
    start.isBackground = request.isBackground;
    start.out = m_out.writeEnd();
    start.error = m_error.writeEnd();
    start.report = report.writeEnd();
    start.parent = ::getpid();
    const pid_t child = ::fork();
    if (child < 0) {
        return errno;
    }
    if (child == 0) {
        becomeProgram(start);
    }
    (void)::setpgid(child, child); // whoever comes first
    m_child = child;
    for (Pipe* pipe : {&m_out, &m_error, &report}) {
        pipe->closeWriteEnd();
    }
    for (const Pipe* pipe : {&m_out, &m_error}) {
        (void)::fcntl(pipe->readEnd(), F_SETFL, O_NONBLOCK);
    }
    return startError(report.readEnd());
}

bool PosixChildProcess::readSome(Pipe& pipe, std::string& text) {
    if (pipe.readEnd() < 0) {
        return false;
    }
    text.resize(kReadBytes);
    const ssize_t count = ::read(pipe.readEnd(), text.data(), text.size());
    const bool mayHaveMore = count > 0 || (count < 0 && (errno == EAGAIN || errno == EINTR));
    text.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    if (!mayHaveMore) {
        pipe.closeReadEnd();
    }
    return count > 0;
}

bool PosixChildProcess::readBoth(milliseconds wait, ChildOutput& output) {
    std::array<pollfd, 2> ends{pollfd{m_out.readEnd(), POLLIN, 0},
                               pollfd{m_error.readEnd(), POLLIN, 0}};
    (void)::poll(ends.data(), ends.size(), static_cast<int>(wait.count()));
    const bool hasOut = readSome(m_out, output.out);
    const bool hasError = readSome(m_error, output.error);
    return hasOut || hasError;
}

bool PosixChildProcess::hasEnded() const {
    siginfo_t info{};
    // Not reaped yet: until the group has been ended, its number must not become another's.
    const int result =
        ::waitid(P_PID, static_cast<id_t>(m_child), &info, WEXITED | WNOHANG | WNOWAIT);
    return result != 0 ? errno != EINTR : info.si_pid != 0;
}

bool PosixChildProcess::read(milliseconds wait, ChildOutput& output) {
    output.out.clear();
    output.error.clear();
    const auto until = steady_clock::now() + wait;
    for (;;) {
        if (m_child != 0 && hasEnded()) {
            endGroup(); // from now on the pipes get no fuller
        }
        const bool isOver = m_child == 0;
        const auto left = std::chrono::ceil<milliseconds>(until - steady_clock::now());
        const auto slice = isOver ? milliseconds(0) : std::clamp(left, milliseconds(0), kSlice);
        if (readBoth(slice, output)) {
            return true;
        }
        if (isOver || left <= milliseconds(0)) {
            return !isOver;
        }
        if (m_out.readEnd() < 0 && m_error.readEnd() < 0) {
            std::this_thread::sleep_for(milliseconds(1)); // it is about to end
        }
    }
}

void PosixChildProcess::end() {
    m_out.closeReadEnd();
    m_error.closeReadEnd();
    endGroup();
}

void PosixChildProcess::endGroup() {
    if (m_child == 0) {
        return;
    }
    ::kill(-m_child, SIGKILL);
    ::kill(m_child, SIGKILL);
    int status = 0;
    pid_t gone = 0;
    do {
        gone = ::waitpid(m_child, &status, 0);
    } while (gone < 0 && errno == EINTR);
    m_exitCode = gone == m_child && WIFEXITED(status) ? WEXITSTATUS(status) : kKilled;
    // The rest of the group is not ours to wait for; it takes its time to go.
    for (int round = 0; round < kGroupRounds && ::kill(-m_child, 0) == 0; ++round) {
        std::this_thread::sleep_for(milliseconds(1));
    }
    m_child = 0;
}

} // namespace

std::unique_ptr<ChildProcess> startChild(const ChildRequest& request, int& error) {
    auto child = std::make_unique<PosixChildProcess>();
    error = child->start(request);
    if (error != 0) {
        return nullptr;
    }
    return child;
}

} // namespace platform
