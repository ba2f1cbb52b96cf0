#include "platform/win32/Win32FileDialog.h"

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <windows.h>

#include <commdlg.h>
#include <shlobj.h>

#include "platform/Guard.h"
#include "platform/win32/WideText.h"
#include "platform/win32/Win32Path.h"
#include "platform/win32/Win32Window.h"

namespace platform::win32 {

namespace {

constexpr std::size_t kBufferLength = 65536;
constexpr DWORD kFlags =
    OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_ALLOWMULTISELECT;
static_assert(kFlags == 0x81A00);

/// "name\0patterns\0\0" as the dialog reads it.
std::wstring filterOf(const OpenFilesRequest& request) {
    std::wstring filter = wide(request.filterName);
    filter += L'\0';
    filter += wide(request.filterPatterns);
    filter += L'\0';
    filter += L'\0';
    return filter;
}

/// One chosen file comes as its path, several as the folder and their names, each ending in a zero
/// and the list in a second one.
OpenFilesResult resultOf(const std::vector<wchar_t>& buffer, std::size_t nameOffset) {
    OpenFilesResult result;
    std::wstring folder(buffer.data(), nameOffset);
    while (!folder.empty() && (folder.back() == L'\0' || folder.back() == L'\\')) {
        folder.pop_back();
    }
    result.folder = narrow(folder + L'\\');
    for (std::size_t at = nameOffset; at < buffer.size() && buffer[at] != L'\0';) {
        const std::wstring name(buffer.data() + at);
        result.names.push_back(narrow(name));
        at += name.size() + 1;
    }
    return result;
}

std::optional<OpenFilesResult> ask(const OpenFilesRequest& request) {
    std::vector<wchar_t> buffer(kBufferLength, L'\0');
    const std::wstring filter = filterOf(request);
    const std::wstring title = wide(request.title);
    const std::wstring folder = widePath(request.initialFolder);
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    if (const auto* owner = static_cast<const Win32Window*>(request.owner)) {
        dialog.hwndOwner = owner->handle();
    }
    dialog.lpstrFilter = filter.c_str();
    dialog.lpstrFile = buffer.data();
    dialog.nMaxFile = static_cast<DWORD>(buffer.size() - 1);
    dialog.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
    dialog.lpstrTitle = title.c_str();
    dialog.Flags = kFlags;
    if (GetOpenFileNameW(&dialog) == 0) {
        return std::nullopt;
    }
    return resultOf(buffer, dialog.nFileOffset);
}

int CALLBACK showInitial(HWND dialog, UINT message, LPARAM /*value*/, LPARAM folder) {
    if (message == BFFM_INITIALIZED && folder != 0) {
        SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE, folder);
    }
    return 0;
}

std::optional<std::string> ask(const FolderRequest& request) {
    const std::wstring title = wide(request.title);
    std::wstring folder = widePath(request.initialFolder);
    BROWSEINFOW dialog{};
    if (const auto* owner = static_cast<const Win32Window*>(request.owner)) {
        dialog.hwndOwner = owner->handle();
    }
    dialog.lpszTitle = title.c_str();
    dialog.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE | BIF_EDITBOX;
    dialog.lpfn = showInitial;
    dialog.lParam = folder.empty() ? 0 : reinterpret_cast<LPARAM>(folder.c_str());
    const std::unique_ptr<ITEMIDLIST, decltype(&CoTaskMemFree)> chosen(SHBrowseForFolderW(&dialog),
                                                                       CoTaskMemFree);
    std::array<wchar_t, MAX_PATH + 1> path{};
    if (!chosen || SHGetPathFromIDListW(chosen.get(), path.data()) == 0) {
        return std::nullopt;
    }
    return narrow(path.data());
}

} // namespace

std::optional<OpenFilesResult> Win32FileDialog::openFiles(const OpenFilesRequest& request) {
    return guarded("file dialog", std::optional<OpenFilesResult>(), [&] { return ask(request); });
}

std::optional<std::string> Win32FileDialog::chooseFolder(const FolderRequest& request) {
    return guarded("folder dialog", std::optional<std::string>(), [&] { return ask(request); });
}

} // namespace platform::win32
