// Files and folders through the wide calls.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/FileSystem.h"

namespace platform::win32 {

class Win32FileSystem final : public FileSystem {
public:
    [[nodiscard]] std::unique_ptr<FileStream> open(const std::string& path, OpenMode mode,
                                                   int& error) override;
    [[nodiscard]] std::optional<FileInfo> info(const std::string& path) override;
    bool createFolder(const std::string& path, int& error) override;
    bool removeFolder(const std::string& path, int& error) override;
    bool removeFile(const std::string& path, int& error) override;
    [[nodiscard]] std::unique_ptr<FileLock> lockFile(const std::string& path, int& error) override;
    bool replaceFile(const std::string& from, const std::string& to, int& error) override;
    bool linkFile(const std::string& from, const std::string& to, int& error) override;
    /// Nothing: a new file takes the rights of its folder.
    void copyAccess(const std::string& from, const std::string& to) override;
    /// Nothing to do: the file system keeps a journal of its folders.
    bool syncFolder(const std::string& folder) override;
    [[nodiscard]] bool list(const std::string& folder, std::vector<FolderEntry>& entries) override;
    [[nodiscard]] std::string currentFolder() override;
    bool setCurrentFolder(const std::string& folder) override;
    [[nodiscard]] std::string fullPath(const std::string& path) override;
    [[nodiscard]] std::string resolveLink(const std::string& path) override;
    [[nodiscard]] std::string errorText(int error) override;
};

} // namespace platform::win32
