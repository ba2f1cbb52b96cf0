#include "platform/win32/Win32FileSystem.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include <windows.h>

#include "platform/Immortal.h"
#include "platform/QuickInfo.h"
#include "platform/win32/Handles.h"
#include "platform/win32/WideText.h"
#include "platform/win32/Win32FileLock.h"
#include "platform/win32/Win32FileStream.h"
#include "platform/win32/Win32Path.h"
#include "platform/win32/Win32Time.h"

namespace platform {

namespace win32 {

namespace {

/// GetFullPathNameW's result and its end must fit into 260 characters.
constexpr std::size_t kMaxFullPath = 259;

bool outcome(BOOL result, int& error) {
    error = result != 0 ? 0 : static_cast<int>(GetLastError());
    return result != 0;
}

/// Half a second in all.
constexpr int kReplaceAttempts = 51;
constexpr DWORD kReplacePause = 10;

/// The file or folder itself, for questions about it.
UniqueFile openForQuestions(const std::wstring& path) {
    return UniqueFile(CreateFileW(path.c_str(), 0,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

/// Whether `error`, from replacing the file at `path`, may be due to somebody who reads it.
bool isInUse(const std::wstring& path, int error) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return (error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION) &&
           attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) == 0;
}

std::uint64_t joined(DWORD high, DWORD low) {
    return static_cast<std::uint64_t>(high) << 32U | low;
}

/// Calls a function of the system that fills a buffer of the length it asks for.
template <typename Fill>
std::wstring filled(Fill fill) {
    std::wstring text(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = fill(static_cast<DWORD>(text.size()), text.data());
        if (length < text.size()) {
            text.resize(length);
            return text;
        }
        text.resize(length + 1);
    }
}

bool namePrecedes(const std::pair<std::wstring, bool>& a, const std::pair<std::wstring, bool>& b) {
    const auto compare = [&](BOOL ignoreCase) {
        return CompareStringOrdinal(a.first.c_str(), -1, b.first.c_str(), -1, ignoreCase);
    };
    const int order = compare(TRUE);
    return order == CSTR_EQUAL ? compare(FALSE) == CSTR_LESS_THAN : order == CSTR_LESS_THAN;
}

} // namespace

std::unique_ptr<FileStream> Win32FileSystem::open(const std::string& path, OpenMode mode,
                                                  int& error) {
    return Win32FileStream::open(path, mode, error);
}

std::optional<FileInfo> Win32FileSystem::info(const std::string& path) {
    const UniqueFile file = openForQuestions(widePath(path));
    BY_HANDLE_FILE_INFORMATION about{};
    if (!file || GetFileInformationByHandle(file.get(), &about) == 0) {
        return std::nullopt;
    }
    FileInfo result;
    result.isFolder = (about.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    result.size = joined(about.nFileSizeHigh, about.nFileSizeLow);
    result.volume = about.dwVolumeSerialNumber;
    result.file = joined(about.nFileIndexHigh, about.nFileIndexLow);
    result.modified = secondsSince1970(about.ftLastWriteTime);
    result.modifiedNanoseconds = nanosecondsOf(about.ftLastWriteTime);
    return result;
}

bool Win32FileSystem::createFolder(const std::string& path, int& error) {
    return outcome(CreateDirectoryW(widePath(path).c_str(), nullptr), error);
}

bool Win32FileSystem::removeFolder(const std::string& path, int& error) {
    return outcome(RemoveDirectoryW(withoutFinalSeparator(widePath(path)).c_str()), error);
}

std::unique_ptr<FileLock> Win32FileSystem::lockFile(const std::string& path, int& error) {
    return Win32FileLock::lock(path, error);
}

bool Win32FileSystem::removeFile(const std::string& path, int& error) {
    return outcome(DeleteFileW(widePath(path).c_str()), error);
}

/// A file that somebody has open cannot be replaced, not even one shared for removal; whoever looks
/// into it, such as the background reading of a scene's files, is soon done.
bool Win32FileSystem::replaceFile(const std::string& from, const std::string& to, int& error) {
    const std::wstring source = widePath(from);
    const std::wstring target = widePath(to);
    for (int attempt = 1;; ++attempt) {
        if (outcome(MoveFileExW(source.c_str(), target.c_str(),
                                MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH),
                    error)) {
            return true;
        }
        if (attempt == kReplaceAttempts || !isInUse(target, error)) {
            return false;
        }
        Sleep(kReplacePause);
    }
}

bool Win32FileSystem::linkFile(const std::string& from, const std::string& to, int& error) {
    const std::wstring source = widePath(from);
    const DWORD attributes = GetFileAttributesW(source.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
        error = ERROR_NOT_SUPPORTED; // a second name of a symbolic link would lead who knows where
        return false;
    }
    return outcome(CreateHardLinkW(widePath(to).c_str(), source.c_str(), nullptr), error);
}

void Win32FileSystem::copyAccess(const std::string& /*from*/, const std::string& /*to*/) {}

bool Win32FileSystem::syncFolder(const std::string& folder) {
    const auto about = info(folder);
    return about && about->isFolder;
}

bool Win32FileSystem::list(const std::string& folder, std::vector<FolderEntry>& entries) {
    entries.clear();
    std::wstring pattern = widePath(folder);
    if (!pattern.empty() && pattern.back() != L'\\') {
        pattern += L'\\';
    }
    WIN32_FIND_DATAW data{};
    const UniqueFind find(FindFirstFileW((pattern + L'*').c_str(), &data));
    if (!find) {
        return GetLastError() == ERROR_FILE_NOT_FOUND; // an empty root
    }
    std::vector<std::pair<std::wstring, bool>> found;
    do {
        const std::wstring name = data.cFileName;
        if (name != L"." && name != L"..") {
            found.emplace_back(name, (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0);
        }
    } while (FindNextFileW(find.get(), &data) != 0);
    const bool complete = GetLastError() == ERROR_NO_MORE_FILES;
    // NTFS lists by name; other volumes in the order of creation.
    std::sort(found.begin(), found.end(), namePrecedes);
    for (const auto& [name, isFolder] : found) {
        entries.push_back({narrow(name), isFolder});
    }
    return complete;
}

std::string Win32FileSystem::currentFolder() {
    return narrow(withoutFinalSeparator(
        filled([](DWORD size, wchar_t* text) { return GetCurrentDirectoryW(size, text); })));
}

bool Win32FileSystem::setCurrentFolder(const std::string& folder) {
    return SetCurrentDirectoryW(widePath(folder).c_str()) != 0;
}

std::string Win32FileSystem::fullPath(const std::string& path) {
    const std::wstring given = widePath(path);
    if (given.empty()) {
        return {};
    }
    const std::wstring full = filled([&](DWORD size, wchar_t* text) {
        return GetFullPathNameW(given.c_str(), size, text, nullptr);
    });
    return full.size() > kMaxFullPath ? std::string() : narrow(withoutFinalSeparator(full));
}

std::string Win32FileSystem::resolveLink(const std::string& path) {
    const std::wstring given = widePath(path);
    const DWORD attributes = GetFileAttributesW(given.c_str());
    const bool link =
        attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    const UniqueFile file = link ? openForQuestions(given) : UniqueFile();
    if (!file) {
        return path;
    }
    const std::wstring end = filled([&](DWORD size, wchar_t* text) {
        return GetFinalPathNameByHandleW(file.get(), text, size, FILE_NAME_NORMALIZED);
    });
    constexpr std::wstring_view kPrefix = L"\\\\?\\";
    constexpr std::wstring_view kSharePrefix = L"\\\\?\\UNC\\";
    if (end.starts_with(kSharePrefix)) {
        return narrow(L"\\\\" + end.substr(kSharePrefix.size()));
    }
    return end.empty() ? path : narrow(end.substr(end.starts_with(kPrefix) ? kPrefix.size() : 0));
}

std::string Win32FileSystem::errorText(int error) {
    wchar_t* text = nullptr;
    const DWORD length = FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, static_cast<DWORD>(error), 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    const UniqueLocalMemory owner(text);
    std::wstring words(text != nullptr ? text : L"", length);
    while (!words.empty() && (words.back() == L'\n' || words.back() == L'\r')) {
        words.pop_back();
    }
    return words.empty() ? "error " + std::to_string(error) : narrow(words);
}

} // namespace win32

FileSystem& nativeFileSystem() {
    static Immortal<win32::Win32FileSystem> fileSystem;
    return fileSystem.value;
}

/// A file's identity is known only once it is open, which takes many times longer.
std::optional<FileInfo> quickInfo(FileSystem& files, const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA about{};
    if (&files != &nativeFileSystem()) {
        return files.info(path);
    }
    if (GetFileAttributesExW(win32::widePath(path).c_str(), GetFileExInfoStandard, &about) == 0) {
        return std::nullopt;
    }
    if ((about.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
        return files.info(path); // of what a link leads to
    }
    FileInfo info;
    info.isFolder = (about.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    info.size = win32::joined(about.nFileSizeHigh, about.nFileSizeLow);
    info.modified = win32::secondsSince1970(about.ftLastWriteTime);
    info.modifiedNanoseconds = win32::nanosecondsOf(about.ftLastWriteTime);
    return info;
}

} // namespace platform
