#include <string>
#include <vector>

#include <windows.h>

#include "platform/Immortal.h"
#include "platform/Process.h"
#include "platform/win32/Handles.h"
#include "platform/win32/WideText.h"
#include "platform/win32/Win32Path.h"

namespace platform {

namespace {

class Win32Process final : public Process {
public:
    bool launch(const LaunchRequest& request) override;
};

bool Win32Process::launch(const LaunchRequest& request) {
    const std::wstring program = win32::widePath(request.program);
    if (program.empty()) {
        return false;
    }
    // Intended: the path stands without quotation marks, as the product's launcher expects it.
    std::wstring line = program;
    if (!request.arguments.empty()) {
        line += L' ' + win32::wide(request.arguments);
    }
    std::vector<wchar_t> writable(line.begin(), line.end());
    writable.push_back(L'\0');
    const std::wstring folder = win32::widePath(request.workingFolder);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    const BOOL good =
        CreateProcessW(nullptr, writable.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS, nullptr,
                       folder.empty() ? nullptr : folder.c_str(), &startup, &started);
    if (good == 0) {
        return false;
    }
    const win32::UniqueKernelObject process(started.hProcess);
    const win32::UniqueKernelObject thread(started.hThread);
    return true;
}

} // namespace

Process& nativeProcess() {
    static Immortal<Win32Process> process;
    return process.value;
}

} // namespace platform
