// A file opened with one of the C mode strings. Text mode writes CR LF for every line feed on every
// system, so files are the same bytes everywhere; reading is always raw. Any thread, one at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/FileSystem.h"

namespace core {

/// If nothing is open, every operation except open and close logs "FILE handle is invalid", which
/// only the UI thread may do, and fails. The destructor closes the file.
class File {
public:
    File() = default;

    /// `mode`: "wb", "wt", "rb" or "rt"; any other fails. Closes what was open before.
    [[nodiscard]] bool open(const std::string& path, const std::string& mode);
    /// False if bytes were lost on the way to the disk. Succeeds if nothing is open.
    bool close();
    /// Flushes everything written to the disk.
    [[nodiscard]] bool sync();

    [[nodiscard]] bool read(void* buffer, std::size_t count);
    /// Allocates `count` bytes if `buffer` is empty, then reads. The buffer stays empty if the
    /// allocation fails or if `count` exceeds both 16 MB and the file's size.
    [[nodiscard]] bool readAlloc(std::unique_ptr<std::uint8_t[]>& buffer, std::size_t count);
    [[nodiscard]] bool write(const void* buffer, std::size_t count);
    /// Little-endian.
    [[nodiscard]] bool writeU32(std::uint32_t value);
    /// The text's bytes, plus a zero byte if writeTerminators is set. An empty text writes nothing.
    [[nodiscard]] bool writeString(const std::string& text);
    /// -1 if unknown, 0 (and a log line) if nothing is open. Keeps the position.
    [[nodiscard]] std::int64_t size();
    /// The system's error code of the first call that failed since open; 0 if none has.
    [[nodiscard]] int lastError() const;

    bool writeTerminators = false;

private:
    [[nodiscard]] bool isOpen() const;
    [[nodiscard]] bool readBlocks(void* buffer, std::size_t count);

    std::unique_ptr<platform::FileStream> m_stream;
    bool m_textMode = false;
    int m_error = 0;
};

/// While it lives, reading on the thread that made it fails once `isStopped` says so, within a
/// block of a megabyte: for reading large files that nobody may need any longer.
class StoppableReading {
public:
    explicit StoppableReading(std::function<bool()> isStopped);
    ~StoppableReading();
    StoppableReading(const StoppableReading&) = delete;
    StoppableReading& operator=(const StoppableReading&) = delete;

private:
    friend class File;

    std::function<bool()> m_isStopped;
    StoppableReading* m_outer;
};

} // namespace core
