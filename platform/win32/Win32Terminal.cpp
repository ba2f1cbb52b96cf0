#include <string_view>

#include "platform/Terminal.h"
#include "platform/win32/Handles.h"

namespace platform {
namespace {

bool writeAll(HANDLE file, std::string_view text) {
    DWORD written = 0;
    return WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) != 0 &&
           written == text.size();
}

} // namespace

bool printToTerminal(std::string_view text) noexcept {
    // A pipe or file that the output was sent to. The handle is not ours to close.
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    if (output != nullptr && GetFileType(output) != FILE_TYPE_UNKNOWN) {
        return writeAll(output, text);
    }
    if (AttachConsole(ATTACH_PARENT_PROCESS) == 0) {
        return false;
    }
    const win32::UniqueFile console(CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE,
                                                FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                                OPEN_EXISTING, 0, nullptr));
    // The prompt is there already: the shell does not wait for programs with windows.
    return console && writeAll(console.get(), "\n") && writeAll(console.get(), text);
}

} // namespace platform
