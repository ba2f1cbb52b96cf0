#include "tests/support/ProcessFigures.h"

#include <algorithm>
#include <array>

#include <windows.h>

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

/// What lies in the heaps, one by one: the count that the system keeps of a process is not filled
/// in everywhere.
std::size_t heapBytes() {
    std::array<HANDLE, 64> heaps{};
    const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < std::min<std::size_t>(count, heaps.size()); ++i) {
        PROCESS_HEAP_ENTRY entry{};
        HeapLock(heaps[i]);
        while (HeapWalk(heaps[i], &entry) != 0) {
            bytes += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? entry.cbData : 0;
        }
        HeapUnlock(heaps[i]);
    }
    return bytes;
}

} // namespace

const std::size_t kHeapTolerance = std::size_t{1} * 1024 * 1024;

ProcessFigures processFigures() {
    DWORD handles = 0;
    GetProcessHandleCount(GetCurrentProcess(), &handles);
    handles += GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    handles += GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    return {heapBytes(), threadCount(), static_cast<int>(handles)};
}

} // namespace support
