#include <sstream>
#include <string>
#include <vector>

#include <windows.h>

#include "platform/Environment.h"
#include "platform/win32/WideText.h"

namespace platform {

std::vector<std::string> searchPath() {
    std::wstring value(GetEnvironmentVariableW(L"PATH", nullptr, 0), L'\0');
    const DWORD length =
        GetEnvironmentVariableW(L"PATH", value.data(), static_cast<DWORD>(value.size()));
    value.resize(length < value.size() ? length : 0); // it may have grown in between
    std::istringstream text(win32::narrow(value));
    std::vector<std::string> folders;
    for (std::string folder; std::getline(text, folder, ';');) {
        if (folder.size() >= 2 && folder.front() == '"' && folder.back() == '"') {
            folder = folder.substr(1, folder.size() - 2);
        }
        folders.push_back(folder);
    }
    return folders;
}

const char* programSuffix() {
    return ".exe";
}

} // namespace platform
