#include "tests/support/ProcessFigures.h"

#include <windows.h>

#include <psapi.h>
#include <tlhelp32.h>

#include "platform/win32/Handles.h"

namespace support {
namespace {

int threadCount() {
    const platform::win32::UniqueFile all(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    int count = 0;
    for (BOOL more = Thread32First(all.get(), &entry); more;
         more = Thread32Next(all.get(), &entry)) {
        count += entry.th32OwnerProcessID == GetCurrentProcessId() ? 1 : 0;
    }
    return count;
}

} // namespace

const std::size_t kHeapTolerance = std::size_t{4} * 1024 * 1024;

ProcessFigures processFigures() {
    PROCESS_MEMORY_COUNTERS_EX memory{};
    memory.cb = sizeof memory;
    GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory),
                         sizeof memory);
    DWORD handles = 0;
    GetProcessHandleCount(GetCurrentProcess(), &handles);
    handles += GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    handles += GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    return {memory.PrivateUsage, threadCount(), static_cast<int>(handles)};
}

} // namespace support
