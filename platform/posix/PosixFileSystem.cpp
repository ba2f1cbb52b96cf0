#include "platform/posix/PosixFileSystem.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/Immortal.h"
#include "platform/QuickInfo.h"
#include "platform/posix/PosixFileLock.h"
#include "platform/posix/PosixFileStream.h"
#include "platform/posix/SystemPath.h"

namespace platform {
namespace {

constexpr mode_t kNewFolderAccess = 0777; // narrowed by the user's mask
constexpr int kMaxLinks = 40;             // the limit that the kernel itself keeps

bool outcome(int result, int& error) {
    error = result == 0 ? 0 : errno;
    return result == 0;
}

/// Empty when `path` is no symbolic link.
std::string linkTarget(const std::string& path) {
    std::string target(256, '\0');
    for (;;) {
        const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
        if (length < 0) {
            return {};
        }
        if (static_cast<std::size_t>(length) < target.size()) {
            target.resize(static_cast<std::size_t>(length));
            return target;
        }
        target.resize(target.size() * 2);
    }
}

} // namespace

std::unique_ptr<FileStream> PosixFileSystem::open(const std::string& path, OpenMode mode,
                                                  int& error) {
    return PosixFileStream::open(path, mode, error);
}

std::optional<FileInfo> PosixFileSystem::info(const std::string& path) {
    struct stat status {};
    if (::stat(systemPath(path).c_str(), &status) != 0) {
        return std::nullopt;
    }
    FileInfo result;
    result.isFolder = S_ISDIR(status.st_mode);
    result.size = static_cast<std::uint64_t>(status.st_size);
    result.volume = status.st_dev;
    result.file = status.st_ino;
    result.modified = status.st_mtim.tv_sec;
    result.modifiedNanoseconds = static_cast<std::int32_t>(status.st_mtim.tv_nsec);
    return result;
}

bool PosixFileSystem::createFolder(const std::string& path, int& error) {
    return outcome(::mkdir(systemPath(path).c_str(), kNewFolderAccess), error);
}

bool PosixFileSystem::removeFolder(const std::string& path, int& error) {
    return outcome(::rmdir(systemPath(path).c_str()), error);
}

std::unique_ptr<FileLock> PosixFileSystem::lockFile(const std::string& path, int& error) {
    return PosixFileLock::lock(path, error);
}

bool PosixFileSystem::removeFile(const std::string& path, int& error) {
    return outcome(::unlink(systemPath(path).c_str()), error);
}

bool PosixFileSystem::replaceFile(const std::string& from, const std::string& to, int& error) {
    return outcome(std::rename(systemPath(from).c_str(), systemPath(to).c_str()), error);
}

bool PosixFileSystem::linkFile(const std::string& from, const std::string& to, int& error) {
    const std::string source = systemPath(from);
    struct stat status {};
    if (::lstat(source.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) {
        error = EINVAL; // a second name of a symbolic link would lead who knows where
        return false;
    }
    return outcome(::linkat(AT_FDCWD, source.c_str(), AT_FDCWD, systemPath(to).c_str(), 0), error);
}

void PosixFileSystem::copyAccess(const std::string& from, const std::string& to) {
    struct stat status {};
    if (::stat(systemPath(from).c_str(), &status) != 0) {
        return;
    }
    const std::string target = systemPath(to);
    // Only the superuser gives files away, but everybody may keep a group of his own. The mode
    // comes last: a change of owner takes some of its bits.
    if (::chown(target.c_str(), status.st_uid, status.st_gid) != 0) {
        const int grouped = ::chown(target.c_str(), static_cast<uid_t>(-1), status.st_gid);
        static_cast<void>(grouped);
    }
    (void)::chmod(target.c_str(), status.st_mode & 07777);
}

std::string PosixFileSystem::currentFolder() {
    std::string folder(256, '\0');
    while (::getcwd(folder.data(), folder.size()) == nullptr) {
        if (errno != ERANGE) {
            return {};
        }
        folder.resize(folder.size() * 2);
    }
    folder.resize(folder.find('\0'));
    // The kernel says "(unreachable)/..." for a folder outside this process's root.
    return folder.front() == '/' ? folder : std::string();
}

bool PosixFileSystem::setCurrentFolder(const std::string& folder) {
    return ::chdir(systemPath(folder).c_str()) == 0;
}

std::string PosixFileSystem::fullPath(const std::string& path) {
    if (path.empty()) {
        return {};
    }
    std::string joined = systemPath(path);
    if (joined.front() != '/') {
        const std::string current = currentFolder();
        if (current.empty()) {
            return {};
        }
        joined = current + "/" + joined;
    }
    std::string result;
    for (std::size_t start = 0; start < joined.size();) {
        const std::size_t end = std::min(joined.find('/', start), joined.size());
        const std::string piece = joined.substr(start, end - start);
        if (piece == "..") {
            result.resize(result.empty() ? 0 : result.rfind('/'));
        } else if (!piece.empty() && piece != ".") {
            result += "/" + piece;
        }
        start = end + 1;
    }
    return result.empty() ? "/" : result;
}

std::string PosixFileSystem::resolveLink(const std::string& path) {
    std::string current = systemPath(path);
    for (int links = 0; links < kMaxLinks; ++links) {
        const std::string target = linkTarget(current);
        if (target.empty()) {
            return links == 0 ? path : current;
        }
        const std::size_t folderEnd = current.rfind('/') + 1; // 0 when there is none
        current = target.front() == '/' ? target : current.substr(0, folderEnd) + target;
    }
    return {};
}

std::string PosixFileSystem::errorText(int error) {
    return std::generic_category().message(error);
}

FileSystem& nativeFileSystem() {
    static Immortal<PosixFileSystem> fileSystem;
    return fileSystem.value;
}

std::optional<FileInfo> quickInfo(FileSystem& files, const std::string& path) {
    return files.info(path);
}

} // namespace platform
