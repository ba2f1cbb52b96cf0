// Files in memory: fast and the same on every system. For fuzz targets and tests without a disk.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/FileSystem.h"

namespace support {

/// Streams and locks may not outlive it. One thread at a time. No links, access rights, sync or
/// seeking.
class MemoryFileSystem final : public platform::FileSystem {
public:
    static constexpr int kNotFound = 2;
    static constexpr int kExists = 17;
    static constexpr int kIsFolder = 21;

    /// The bytes under their absolute path with "/"; "/home" is the current folder, always.
    std::map<std::string, std::string> files;
    std::set<std::string> folders{"/", "/home"};

    [[nodiscard]] std::unique_ptr<platform::FileStream>
    open(const std::string& path, platform::OpenMode mode, int& error) override;
    [[nodiscard]] std::optional<platform::FileInfo> info(const std::string& path) override;
    bool createFolder(const std::string& path, int& error) override;
    bool removeFolder(const std::string& path, int& error) override;
    bool removeFile(const std::string& path, int& error) override;
    /// Nobody else has locked it.
    [[nodiscard]] std::unique_ptr<platform::FileLock> lockFile(const std::string& path,
                                                               int& error) override;
    bool replaceFile(const std::string& from, const std::string& to, int& error) override;
    bool linkFile(const std::string&, const std::string&, int& error) override {
        error = kExists;
        return false;
    }
    void copyAccess(const std::string&, const std::string&) override {}
    bool syncFolder(const std::string&) override { return true; }
    [[nodiscard]] bool list(const std::string& folder,
                            std::vector<platform::FolderEntry>& entries) override;
    [[nodiscard]] std::string currentFolder() override { return "/home"; }
    bool setCurrentFolder(const std::string&) override { return false; }
    [[nodiscard]] std::string fullPath(const std::string& path) override;
    [[nodiscard]] std::string resolveLink(const std::string& path) override { return path; }
    [[nodiscard]] std::string errorText(int error) override {
        return "error " + std::to_string(error);
    }
};

} // namespace support
