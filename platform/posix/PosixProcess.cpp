#include <algorithm>
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
#include "platform/posix/Pipe.h"
#include "platform/posix/SystemPath.h"

namespace platform {
namespace {

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
    reportStartError(report);
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
        Pipe pipe;
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
        return reaped(child) && startError(pipe.readEnd()) == 0;
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
};

} // namespace

Process& nativeProcess() {
    static Immortal<PosixProcess> process;
    return process.value;
}

} // namespace platform
