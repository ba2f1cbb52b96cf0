#include <exception>
#include <string_view>

#include <windows.h>

#include "platform/DebugLine.h"
#include "platform/win32/WideText.h"

namespace platform {

void writeDebugLine(std::string_view text) noexcept {
    try {
        OutputDebugStringW(win32::wide(text).c_str());
        OutputDebugStringW(L"\n");
    } catch (const std::exception&) {
        // Out of memory for a debug line: nothing can be reported.
    }
}

} // namespace platform
