#include "tests/support/ProcessFigures.h"

#include <algorithm>
#include <array>
#include <vector>

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

/// By the room that is left for more: the system's own count is not filled in everywhere.
int gdiObjects() {
    using Brush = platform::win32::Unique<platform::win32::ObjectTraits<HBRUSH>>;
    constexpr std::size_t kMost = 1U << 17U;
    std::vector<Brush> brushes;
    bool room = true;
    while (room && brushes.size() < kMost) {
        room = static_cast<bool>(brushes.emplace_back(CreateSolidBrush(RGB(1, 2, 3))));
    }
    return static_cast<int>(kMost - brushes.size());
}

/// The windows of this thread, hidden ones and those for messages alone included.
int windowCount() {
    int count = 0;
    const auto note = [](HWND, LPARAM found) -> BOOL {
        ++*reinterpret_cast<int*>(found);
        return TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), note, reinterpret_cast<LPARAM>(&count));
    for (HWND window = FindWindowExW(HWND_MESSAGE, nullptr, nullptr, nullptr); window != nullptr;
         window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)) {
        count += GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId() ? 1 : 0;
    }
    return count;
}

/// The pictures of a standard pointer come into being when it is first loaded and stay as long as
/// the process: with all of them loaded, the figures do not depend on where the mouse has been.
void loadStandardPointers() {
    for (const wchar_t* name :
         {IDC_ARROW, IDC_IBEAM, IDC_WAIT, IDC_CROSS, IDC_UPARROW, IDC_SIZENWSE, IDC_SIZENESW,
          IDC_SIZEWE, IDC_SIZENS, IDC_SIZEALL, IDC_NO, IDC_HAND, IDC_APPSTARTING, IDC_HELP}) {
        LoadCursorW(nullptr, name);
    }
}

} // namespace

const std::size_t kHeapTolerance = std::size_t{1} * 1024 * 1024;

ProcessFigures processFigures() {
    loadStandardPointers();
    DWORD handles = 0;
    GetProcessHandleCount(GetCurrentProcess(), &handles);
    const DWORD user = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    return {heapBytes(), threadCount(),
            static_cast<int>(handles + user) + gdiObjects() + windowCount()};
}

} // namespace support
