#include "platform/posix/PosixFileLock.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/SystemPath.h"

namespace platform {
namespace {

constexpr mode_t kNewFileAccess = 0666; // narrowed by the user's mask
/// How often another program may remove the file between opening and locking it.
constexpr int kMaxAttempts = 10;

} // namespace

std::unique_ptr<FileLock> PosixFileLock::lock(const std::string& path, int& error) {
    auto lock = std::make_unique<PosixFileLock>(systemPath(path));
    for (int attempt = 0; attempt < kMaxAttempts; ++attempt) {
        if (!lock->open(error)) {
            return nullptr;
        }
        if (lock->isIntact()) {
            return lock;
        }
        lock->close();
    }
    return nullptr;
}

bool PosixFileLock::open(int& error) {
    error = 0;
    m_descriptor = ::open(m_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK,
                          kNewFileAccess);
    if (m_descriptor < 0) {
        error = errno;
        return false;
    }
    const bool isLocked = ::flock(m_descriptor, LOCK_EX | LOCK_NB) == 0;
    if (!isLocked && errno != EWOULDBLOCK) {
        error = errno;
    }
    return isLocked;
}

void PosixFileLock::close() {
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
    m_descriptor = -1;
}

bool PosixFileLock::isIntact() const {
    struct stat ours {};
    struct stat there {};
    return m_descriptor >= 0 && ::fstat(m_descriptor, &ours) == 0 &&
           ::lstat(m_path.c_str(), &there) == 0 && ours.st_dev == there.st_dev &&
           ours.st_ino == there.st_ino;
}

void PosixFileLock::remove() {
    if (isIntact()) {
        ::unlink(m_path.c_str()); // first: once unlocked, the file may be another program's
    }
    close();
}

} // namespace platform
