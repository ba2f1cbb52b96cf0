#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <windows.h>

#include "platform/ChildProcess.h"
#include "platform/win32/CommandQuoting.h"
#include "platform/win32/Handles.h"
#include "platform/win32/WideText.h"
#include "platform/win32/Win32Path.h"

namespace platform {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// Pipes without a name cannot be waited for, so they are looked at: soon at first, later this
/// often.
constexpr milliseconds kSlice{10};
/// Before a start that failed is tried again: a virus scanner holds a new program for a moment, and
/// a busy system may refuse one.
constexpr std::array<milliseconds, 2> kPauses{milliseconds(100), milliseconds(200)};
/// Ends of programs by a fault of theirs have the severity "error" in their number.
constexpr DWORD kFaultBits = 0xC0000000;

bool isLasting(DWORD error) {
    constexpr std::array<DWORD, 6> kErrors{ERROR_FILE_NOT_FOUND,    ERROR_PATH_NOT_FOUND,
                                           ERROR_INVALID_PARAMETER, ERROR_INVALID_NAME,
                                           ERROR_DIRECTORY,         ERROR_BAD_EXE_FORMAT};
    return std::find(kErrors.begin(), kErrors.end(), error) != kErrors.end();
}

struct PipeEnds {
    win32::UniqueKernelObject ours;
    win32::UniqueKernelObject theirs;
};

/// A child inherits the second end, and that one alone.
bool makePipe(PipeEnds& ends) {
    HANDLE ours = nullptr;
    HANDLE theirs = nullptr;
    if (CreatePipe(&ours, &theirs, nullptr, ChildProcess::kReadBytes) == 0) {
        return false;
    }
    ends.ours.reset(ours);
    ends.theirs.reset(theirs);
    return SetHandleInformation(theirs, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT) != 0;
}

/// The list of handles that a process inherits.
class HandleList {
public:
    /// handles: outlive the list.
    explicit HandleList(std::array<HANDLE, 3>& handles) {
        SIZE_T bytes = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &bytes);
        m_memory.resize(bytes);
        m_isMade = InitializeProcThreadAttributeList(get(), 1, 0, &bytes) != 0;
        m_isGood = m_isMade &&
                   UpdateProcThreadAttribute(get(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST,
                                             handles.data(), sizeof handles, nullptr, nullptr) != 0;
    }
    ~HandleList() {
        if (m_isMade) {
            DeleteProcThreadAttributeList(get());
        }
    }
    HandleList(const HandleList&) = delete;
    HandleList& operator=(const HandleList&) = delete;

    [[nodiscard]] bool isGood() const { return m_isGood; }
    [[nodiscard]] LPPROC_THREAD_ATTRIBUTE_LIST get() {
        return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(m_memory.data());
    }

private:
    std::vector<std::byte> m_memory;
    bool m_isMade = false;
    bool m_isGood = false;
};

/// Whatever is in it ends when its last handle closes.
win32::UniqueKernelObject makeJob(std::uint64_t memoryBytes) {
    win32::UniqueKernelObject job(CreateJobObjectW(nullptr, nullptr));
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags =
        JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE | JOB_OBJECT_LIMIT_DIE_ON_UNHANDLED_EXCEPTION;
    if (memoryBytes > 0) {
        limits.BasicLimitInformation.LimitFlags |= JOB_OBJECT_LIMIT_JOB_MEMORY;
        limits.JobMemoryLimit = static_cast<SIZE_T>(memoryBytes);
    }
    if (!job || SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits,
                                        sizeof limits) == 0) {
        return win32::UniqueKernelObject();
    }
    return job;
}

class Win32ChildProcess final : public ChildProcess {
public:
    ~Win32ChildProcess() override { endJob(); }

    bool start(const ChildRequest& request);
    bool read(milliseconds wait, ChildOutput& output) override;
    void end() override;
    [[nodiscard]] int exitCode() const override { return m_exitCode; }

private:
    bool startSuspended(const ChildRequest& request, std::wstring& line,
                        PROCESS_INFORMATION& started);
    /// True if there was something to read.
    static bool readSome(const win32::UniqueKernelObject& pipe, std::string& text);
    void endJob();

    win32::UniqueKernelObject m_out;
    win32::UniqueKernelObject m_error;
    win32::UniqueKernelObject m_process; ///< none once it is gone
    win32::UniqueKernelObject m_job;
    int m_exitCode = kKilled;
};

bool Win32ChildProcess::start(const ChildRequest& request) {
    std::wstring line;
    win32::appendArgument(line, win32::widePath(request.program));
    for (const std::string& argument : request.arguments) {
        if (argument.find('\0') != std::string::npos) {
            SetLastError(ERROR_INVALID_PARAMETER);
            return false;
        }
        win32::appendArgument(line, win32::wide(argument));
    }
    m_job = makeJob(request.memoryBytes);
    PROCESS_INFORMATION started{};
    if (!m_job || !startSuspended(request, line, started)) {
        return false;
    }
    m_process.reset(started.hProcess);
    const win32::UniqueKernelObject thread(started.hThread);
    if (AssignProcessToJobObject(m_job.get(), m_process.get()) == 0) {
        const DWORD error = GetLastError();
        TerminateProcess(m_process.get(), 1);
        SetLastError(error);
        return false;
    }
    return ResumeThread(thread.get()) != static_cast<DWORD>(-1);
}

bool Win32ChildProcess::startSuspended(const ChildRequest& request, std::wstring& line,
                                       PROCESS_INFORMATION& started) {
    PipeEnds out;
    PipeEnds error;
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    const win32::UniqueFile nowhere(CreateFileW(L"NUL", GENERIC_READ,
                                                FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                                                OPEN_EXISTING, 0, nullptr));
    if (!nowhere || !makePipe(out) || !makePipe(error)) {
        return false;
    }
    std::array<HANDLE, 3> handles{nowhere.get(), out.theirs.get(), error.theirs.get()};
    HandleList list(handles);
    if (!list.isGood()) {
        return false;
    }
    STARTUPINFOEXW startup{};
    startup.StartupInfo.cb = sizeof startup;
    startup.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    startup.StartupInfo.hStdInput = handles[0];
    startup.StartupInfo.hStdOutput = handles[1];
    startup.StartupInfo.hStdError = handles[2];
    startup.lpAttributeList = list.get();
    const std::wstring program = win32::widePath(request.program);
    const std::wstring folder = win32::widePath(request.workingFolder);
    const DWORD flags = CREATE_SUSPENDED | CREATE_NO_WINDOW | EXTENDED_STARTUPINFO_PRESENT |
                        (request.isBackground ? BELOW_NORMAL_PRIORITY_CLASS : 0U);
    if (CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, flags, nullptr,
                       folder.empty() ? nullptr : folder.c_str(), &startup.StartupInfo,
                       &started) == 0) {
        return false;
    }
    m_out = std::move(out.ours);
    m_error = std::move(error.ours);
    return true;
}

bool Win32ChildProcess::readSome(const win32::UniqueKernelObject& pipe, std::string& text) {
    DWORD waiting = 0;
    if (!pipe || PeekNamedPipe(pipe.get(), nullptr, 0, nullptr, &waiting, nullptr) == 0 ||
        waiting == 0) {
        return false;
    }
    text.resize(std::min<std::size_t>(waiting, kReadBytes));
    DWORD count = 0;
    if (ReadFile(pipe.get(), text.data(), static_cast<DWORD>(text.size()), &count, nullptr) == 0) {
        count = 0;
    }
    text.resize(count);
    return count > 0;
}

bool Win32ChildProcess::read(milliseconds wait, ChildOutput& output) {
    output.out.clear();
    output.error.clear();
    const auto until = steady_clock::now() + wait;
    milliseconds slice{1};
    for (;;) {
        if (m_process && WaitForSingleObject(m_process.get(), 0) == WAIT_OBJECT_0) {
            endJob(); // from now on the pipes get no fuller
        }
        const bool isOver = !m_process;
        const bool hasOut = readSome(m_out, output.out);
        const bool hasError = readSome(m_error, output.error);
        if (hasOut || hasError) {
            return true;
        }
        const auto left = std::chrono::ceil<milliseconds>(until - steady_clock::now());
        if (isOver || left <= milliseconds(0)) {
            return !isOver;
        }
        (void)WaitForSingleObject(m_process.get(),
                                  static_cast<DWORD>(std::min(left, slice).count()));
        slice = std::min(slice * 2, kSlice);
    }
}

void Win32ChildProcess::end() {
    m_out.reset();
    m_error.reset();
    endJob();
}

void Win32ChildProcess::endJob() {
    if (!m_process) {
        return;
    }
    const bool endedItself = WaitForSingleObject(m_process.get(), 0) == WAIT_OBJECT_0;
    TerminateJobObject(m_job.get(), 1);
    WaitForSingleObject(m_process.get(), INFINITE);
    DWORD code = 0;
    const bool isKnown = endedItself && GetExitCodeProcess(m_process.get(), &code) != 0 &&
                         (code & kFaultBits) != kFaultBits;
    m_exitCode = isKnown ? static_cast<int>(code) : kKilled;
    m_process.reset();
    m_job.reset();
}

} // namespace

std::unique_ptr<ChildProcess> startChild(const ChildRequest& request, int& error) {
    for (std::size_t attempt = 0;; ++attempt) {
        auto child = std::make_unique<Win32ChildProcess>();
        if (child->start(request)) {
            error = 0;
            return child;
        }
        const DWORD code = GetLastError();
        if (attempt == kPauses.size() || isLasting(code)) {
            error = code != 0 ? static_cast<int>(code) : ERROR_GEN_FAILURE;
            return nullptr;
        }
        std::this_thread::sleep_for(kPauses[attempt]);
    }
}

} // namespace platform
