#include "platform/win32/Win32FileLock.h"

#include <windows.h>

#include "platform/win32/Win32Path.h"

namespace platform::win32 {

std::unique_ptr<FileLock> Win32FileLock::lock(const std::string& path, int& error) {
    error = 0;
    const std::wstring name = widePath(path);
    UniqueFile file(CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE,
                                FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    OVERLAPPED start{};
    if (!file || LockFileEx(file.get(), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1,
                            0, &start) == 0) {
        const DWORD reason = GetLastError();
        error = reason == ERROR_LOCK_VIOLATION ? 0 : static_cast<int>(reason);
        return nullptr;
    }
    return std::make_unique<Win32FileLock>(name, std::move(file));
}

void Win32FileLock::remove() {
    if (m_file) {
        m_file.reset();
        DeleteFileW(m_path.c_str()); // fails when another program has it open by now
    }
}

} // namespace platform::win32
