#include <sstream>
#include <string>
#include <vector>

#include <windows.h>

#include <combaseapi.h>
#include <knownfolders.h>
#include <shlobj.h>

#include "platform/Environment.h"
#include "platform/win32/WideText.h"

namespace platform {
namespace {

std::string knownFolder(const KNOWNFOLDERID& id) {
    PWSTR path = nullptr;
    const bool isKnown = SUCCEEDED(SHGetKnownFolderPath(id, KF_FLAG_DEFAULT, nullptr, &path));
    const std::string folder = isKnown ? win32::narrow(path) : std::string();
    CoTaskMemFree(path);
    return folder;
}

} // namespace

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

UserFolders userFolders() {
    return {knownFolder(FOLDERID_Documents), knownFolder(FOLDERID_RoamingAppData)};
}

std::string expandVariables(const std::string& text) {
    const std::wstring source = win32::wide(text);
    std::wstring value(ExpandEnvironmentStringsW(source.c_str(), nullptr, 0), L'\0');
    const DWORD length =
        ExpandEnvironmentStringsW(source.c_str(), value.data(), static_cast<DWORD>(value.size()));
    // Counted with its final zero. It may have grown in between.
    value.resize(length > 0 && length <= value.size() ? length - 1 : 0);
    return win32::narrow(value);
}

} // namespace platform
