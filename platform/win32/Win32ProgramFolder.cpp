#include <cstddef>
#include <string>
#include <vector>

#include <windows.h>

#include "platform/ProgramFolder.h"
#include "platform/win32/WideText.h"

namespace platform {

std::string programFolder() {
    constexpr std::size_t kLongestPath = 32768; // UTF-16 units, the system's own bound
    std::vector<wchar_t> buffer(kLongestPath);
    const DWORD length =
        GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
    const std::wstring path(buffer.data(), length < buffer.size() ? length : 0);
    const std::size_t end = path.find_last_of(L'\\');
    return end == std::wstring::npos ? std::string() : win32::narrow(path.substr(0, end));
}

} // namespace platform
