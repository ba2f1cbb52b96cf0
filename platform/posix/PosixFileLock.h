// A lock that the kernel keeps for an open file. Used by the POSIX back end's sources only.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/FileSystem.h"

namespace platform {

class PosixFileLock final : public FileLock {
public:
    /// As FileSystem::lockFile.
    [[nodiscard]] static std::unique_ptr<FileLock> lock(const std::string& path, int& error);

    /// Of nothing yet.
    explicit PosixFileLock(std::string path) : m_path(std::move(path)) {}
    ~PosixFileLock() override { close(); }
    PosixFileLock(const PosixFileLock&) = delete;
    PosixFileLock& operator=(const PosixFileLock&) = delete;

    [[nodiscard]] bool isIntact() const override;
    void remove() override;

private:
    /// False, with the system's code, unless the file is open and locked.
    [[nodiscard]] bool open(int& error);
    void close();

    std::string m_path; ///< as the system spells it
    int m_descriptor = -1;
};

} // namespace platform
