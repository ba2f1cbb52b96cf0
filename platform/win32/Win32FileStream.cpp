#include "platform/win32/Win32FileStream.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include "platform/win32/Handles.h"
#include "platform/win32/Win32Path.h"

namespace platform::win32 {

namespace {

UniqueFile openHandle(const std::string& path, OpenMode mode) {
    const DWORD access = mode == OpenMode::read ? GENERIC_READ : GENERIC_WRITE;
    const DWORD creation = mode == OpenMode::write ? CREATE_ALWAYS : OPEN_EXISTING;
    // Sharing everything: a player or a virus scanner that reads a file must not fail a save.
    return UniqueFile(CreateFileW(widePath(path).c_str(), access,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  creation, FILE_ATTRIBUTE_NORMAL, nullptr));
}

/// Reading a pipe or a console may never end.
bool isRefused(const UniqueFile& file, OpenMode mode) {
    return GetFileType(file.get()) != FILE_TYPE_DISK && mode != OpenMode::write;
}

} // namespace

std::unique_ptr<FileStream> Win32FileStream::open(const std::string& path, OpenMode mode,
                                                  int& error) {
    error = 0;
    UniqueFile file = openHandle(path, mode);
    if (!file) {
        error = static_cast<int>(GetLastError());
        return nullptr;
    }
    if (isRefused(file, mode)) {
        error = ERROR_INVALID_HANDLE;
        return nullptr;
    }
    const bool reading = mode == OpenMode::read;
    const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(file.get()),
                                           _O_BINARY | (reading ? _O_RDONLY : _O_WRONLY));
    if (descriptor < 0) {
        error = ERROR_TOO_MANY_OPEN_FILES;
        return nullptr;
    }
    file.release(); // the descriptor closes it
    std::FILE* stream = _fdopen(descriptor, reading ? "rb" : "wb");
    if (stream == nullptr) {
        _close(descriptor);
        error = ERROR_TOO_MANY_OPEN_FILES;
        return nullptr;
    }
    return std::make_unique<Win32FileStream>(stream);
}

bool Win32FileStream::keepError(bool good) {
    if (!good && m_error == 0) {
        m_error = static_cast<int>(_doserrno);
        if (m_error == 0) { // the C library failed without a system call
            m_error = ERROR_GEN_FAILURE;
        }
    }
    return good;
}

std::size_t Win32FileStream::read(void* buffer, std::size_t count) {
    if (!m_stream || count == 0) {
        return 0;
    }
    const std::size_t done = std::fread(buffer, 1, count, m_stream.get());
    // The C library does not mark every refused read as an error, but always marks the end.
    keepError(done == count || std::feof(m_stream.get()) != 0);
    return done;
}

std::size_t Win32FileStream::write(const void* buffer, std::size_t count) {
    if (!m_stream || count == 0) {
        return 0;
    }
    const std::size_t done = std::fwrite(buffer, 1, count, m_stream.get());
    keepError(done == count);
    return done;
}

bool Win32FileStream::seek(std::int64_t position) {
    return m_stream && position >= 0 &&
           keepError(_fseeki64(m_stream.get(), position, SEEK_SET) == 0);
}

std::int64_t Win32FileStream::tell() const {
    return m_stream ? _ftelli64(m_stream.get()) : -1;
}

std::int64_t Win32FileStream::size() const {
    const std::int64_t position = tell();
    if (position < 0 || _fseeki64(m_stream.get(), 0, SEEK_END) != 0) {
        return -1;
    }
    const std::int64_t end = tell();
    return _fseeki64(m_stream.get(), position, SEEK_SET) == 0 ? end : -1;
}

bool Win32FileStream::sync() {
    return m_stream && keepError(std::fflush(m_stream.get()) == 0) &&
           keepError(_commit(_fileno(m_stream.get())) == 0);
}

bool Win32FileStream::close() {
    if (!m_stream) {
        return false;
    }
    const bool good = std::ferror(m_stream.get()) == 0;
    return keepError(std::fclose(m_stream.release()) == 0) && good;
}

} // namespace platform::win32
