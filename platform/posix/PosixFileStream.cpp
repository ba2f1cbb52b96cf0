#include "platform/posix/PosixFileStream.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/SystemPath.h"

namespace platform {
namespace {

constexpr mode_t kNewFileAccess = 0666; // narrowed by the user's mask

/// A descriptor until a stream takes it over.
class UniqueDescriptor {
public:
    explicit UniqueDescriptor(int descriptor) : m_descriptor(descriptor) {}
    ~UniqueDescriptor() {
        if (m_descriptor >= 0) {
            ::close(m_descriptor);
        }
    }
    UniqueDescriptor(const UniqueDescriptor&) = delete;
    UniqueDescriptor& operator=(const UniqueDescriptor&) = delete;
    [[nodiscard]] int get() const { return m_descriptor; }
    void release() { m_descriptor = -1; }

private:
    int m_descriptor;
};

int openFlags(OpenMode mode) {
    // O_NONBLOCK: opening a pipe without a writer must not wait for ever.
    const int common = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    switch (mode) {
    case OpenMode::write:
        return common | O_WRONLY | O_CREAT | O_TRUNC;
    case OpenMode::writeInPlace:
        return common | O_WRONLY;
    case OpenMode::read:
        break;
    }
    return common | O_RDONLY;
}

/// 0, or why a file of this kind is refused.
int refusal(const struct stat& status, OpenMode mode) {
    if (S_ISDIR(status.st_mode)) {
        return EISDIR;
    }
    if (S_ISREG(status.st_mode)) {
        return 0;
    }
    // Writing to a device such as /dev/null is the user's own wish; reading one may never end.
    return mode == OpenMode::write && S_ISCHR(status.st_mode) ? 0 : EINVAL;
}

} // namespace

std::unique_ptr<FileStream> PosixFileStream::open(const std::string& path, OpenMode mode,
                                                  int& error) {
    error = 0;
    UniqueDescriptor descriptor(::open(systemPath(path).c_str(), openFlags(mode), kNewFileAccess));
    struct stat status {};
    if (descriptor.get() < 0 || ::fstat(descriptor.get(), &status) != 0) {
        error = errno;
        return nullptr;
    }
    error = refusal(status, mode);
    if (error != 0) {
        return nullptr;
    }
    const int flags = ::fcntl(descriptor.get(), F_GETFL);
    ::fcntl(descriptor.get(), F_SETFL, flags & ~O_NONBLOCK);
    std::FILE* stream = ::fdopen(descriptor.get(), mode == OpenMode::read ? "rb" : "wb");
    if (stream == nullptr) {
        error = errno;
        return nullptr;
    }
    descriptor.release();
    return std::make_unique<PosixFileStream>(stream);
}

bool PosixFileStream::keepError(bool good) {
    if (!good && m_error == 0) {
        m_error = errno;
    }
    return good;
}

std::size_t PosixFileStream::read(void* buffer, std::size_t count) {
    if (!m_stream || count == 0) {
        return 0;
    }
    const std::size_t done = std::fread(buffer, 1, count, m_stream.get());
    keepError(std::ferror(m_stream.get()) == 0);
    return done;
}

std::size_t PosixFileStream::write(const void* buffer, std::size_t count) {
    if (!m_stream || count == 0) {
        return 0;
    }
    const std::size_t done = std::fwrite(buffer, 1, count, m_stream.get());
    keepError(done == count);
    return done;
}

bool PosixFileStream::seek(std::int64_t position) {
    return m_stream && position >= 0 &&
           keepError(::fseeko(m_stream.get(), position, SEEK_SET) == 0);
}

std::int64_t PosixFileStream::tell() const {
    return m_stream ? ::ftello(m_stream.get()) : -1;
}

std::int64_t PosixFileStream::size() const {
    const std::int64_t position = tell();
    if (position < 0 || ::fseeko(m_stream.get(), 0, SEEK_END) != 0) {
        return -1;
    }
    const std::int64_t end = tell();
    return ::fseeko(m_stream.get(), position, SEEK_SET) == 0 ? end : -1;
}

bool PosixFileStream::sync() {
    if (!m_stream || !keepError(std::fflush(m_stream.get()) == 0)) {
        return false;
    }
    if (::fsync(::fileno(m_stream.get())) == 0) {
        return true;
    }
    // Some file systems do not support it; the system has the bytes then.
    return errno == EINVAL || errno == ENOSYS || keepError(false);
}

bool PosixFileStream::close() {
    if (!m_stream) {
        return false;
    }
    const bool good = std::ferror(m_stream.get()) == 0;
    return keepError(std::fclose(m_stream.release()) == 0) && good;
}

} // namespace platform
