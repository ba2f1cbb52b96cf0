// A lock that the system keeps for an open file.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/FileSystem.h"
#include "platform/win32/Handles.h"

namespace platform::win32 {

class Win32FileLock final : public FileLock {
public:
    /// As FileSystem::lockFile.
    [[nodiscard]] static std::unique_ptr<FileLock> lock(const std::string& path, int& error);

    Win32FileLock(std::wstring path, UniqueFile file)
        : m_path(std::move(path)), m_file(std::move(file)) {}

    /// Nobody can remove the file while it is open.
    [[nodiscard]] bool isIntact() const override { return static_cast<bool>(m_file); }
    void remove() override;

private:
    std::wstring m_path;
    UniqueFile m_file;
};

} // namespace platform::win32
