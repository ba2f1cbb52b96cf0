#include "platform/win32/Win32Desktop.h"

#include <windows.h>

#include <shellapi.h>

#include "platform/Guard.h"
#include "platform/win32/WideText.h"
#include "platform/win32/Win32Path.h"

namespace platform::win32 {

bool Win32Desktop::openFile(const std::string& path) {
    return guarded("opening a file", false, [&] {
        const std::wstring file = widePath(path);
        SHELLEXECUTEINFOW request{};
        request.cbSize = sizeof request;
        request.fMask = SEE_MASK_FLAG_NO_UI; // the caller reports failures
        request.lpVerb = L"open";
        request.lpFile = file.c_str();
        request.nShow = SW_SHOWNORMAL;
        return !file.empty() && ShellExecuteExW(&request) != 0;
    });
}

void Win32Desktop::showError(const std::string& title, const std::string& text) {
    guardedRun("message box", [&] {
        MessageBoxW(GetActiveWindow(), wide(text).c_str(), wide(title).c_str(),
                    MB_OK | MB_ICONERROR);
    });
}

} // namespace platform::win32
